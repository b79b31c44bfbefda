// A contour page by Magics: page_magics GRIB OUTPUT MAP LEVEL...      MAP: "plain" or "polar"
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

#include <magics_api.h>

int main(int argc, char ** argv)
{
    if (argc < 5)
        return 1;
    bool const is_polar = std::string(argv[3]) == "polar";
    std::vector<double> levels;
    for (int i = 4; i < argc; ++i)
        levels.push_back(std::strtod(argv[i], nullptr));

    mag_open();
    char const * format[] = {"ps"};
    mag_set1c("output_formats", format, 1);
    for (auto const & [key, value] :
         {std::pair{"output_name", static_cast<char const *>(argv[2])},
          {"output_name_first_page_number", "off"},
          {"page_id_line", "off"},
          {"subpage_map_projection", is_polar ? "polar_stereographic" : "cylindrical"},
          {"subpage_map_area_definition", "corners"},
          {"grib_automatic_scaling", "off"},
          {"grib_input_file_name", static_cast<char const *>(argv[1])},
          {"legend", "off"},
          {"contour_level_selection_type", "level_list"},
          {"contour_label", "off"},
          {"contour_highlight", "off"},
          {"contour_hilo", "off"},
          {"contour_method", "linear"},
          {"contour_line_colour", "black"}})
        mag_setc(key, value);
    double const corners[] = {is_polar ? 20. : -90., is_polar ? -45. : 0., is_polar ? 20. : 90.,
                              is_polar ? 135. : 359.75};
    char const * const keys[] = {"subpage_lower_left_latitude", "subpage_lower_left_longitude",
                                 "subpage_upper_right_latitude", "subpage_upper_right_longitude"};
    for (int i = 0; i < 4; ++i)
        mag_setr(keys[i], corners[i]);
    mag_seti("grib_field_position", 1);
    mag_seti("contour_line_thickness", 1);
    mag_set1r("contour_level_list", levels.data(), static_cast<int>(levels.size()));
    mag_grib();
    mag_cont();
    mag_close();
    return 0;
}
