// The PostScript device.
#pragma once

#include "core/File.h"
#include "graphics/FileDevice.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace Yul {

/// Writes a plot as a PostScript page or an Encapsulated PostScript file. Device units are points (1/72 inch)
/// on the page after the transform in the prolog, y upward; colours are packed 24-bit RGB. Text is not drawn
/// by this device: it arrives as strokes. Figures with a coordinate that is not finite are not drawn and give
/// 0. Source: PostScript Language Reference, third edition; Document Structuring Conventions, version 3.0.
class Postscript final : public FileDevice
{
public:
    static constexpr int FILE_NAME_SIZE = 60; ///< characters of a file name that are kept
    static constexpr char const * DEFAULT_FILE = "yul.ps";

    Postscript();
    ~Postscript() override; ///< finishes an open page

    int init() override;

    /// "file,item,...": the first item is the output file (cut to FILE_NAME_SIZE characters; empty: as
    /// before), "+name" appends to it, "|command" pipes into a command. Items, in any case and on a prefix:
    /// port, land, eps, noeps, color, gray, scale=S, lwidth=F, sz=W:H (inches), letter, legal, 11x17, a4, a3,
    /// ansid. Unknown items, and numbers that are not positive, are passed over. "port" leaves the page's width
    /// and height as they are: an upright sheet asks for "port,sz=8:10.5". The box of an EPS picture is fixed:
    /// "eps,port" fills it upright, a lying picture stands out of it by half an inch at its foot.
    int setParam(char const * params) override;
    /// Says on standard output where the page goes, and writes header and prolog.
    int open() override;
    /// Writes the trailer and finishes the file or the command; 0 with a message when any of the page was
    /// lost since it was opened. 0 without one when nothing was open.
    int close() override;
    int getDevice(String & name) override;
    int setTitle(char const * new_title) override;

    int getSize(float & width, float & height) override;
    float getWidth() override;
    float getHeight() override;
    int getOffset(float & x, float & y) override;
    /// (0, height, width, 0): the page's upper left corner first.
    int getCoords(Rect & rect) override;
    Rect getCoords() override;
    float getDotSize() override;

    int allocColor(float r, float g, float b) override;
    int setColor(int pen, int color) override;
    int setLineWidth(int pen, float width) override;
    int setLineStyle(int pen, int style) override;
    int setFillStyle(int pen, int style) override;

    int drawLine(int pen, float x1, float y1, float x2, float y2) override;
    int drawLine(int pen, Points const & points) override;
    int drawFill(int pen, Points const & points) override;
    int setImageAlign(int horizontal, int vertical) override;
    int drawImage(Image const & image, float x, float y) override;
    int setFont(char const * font) override;
    int setTextAlign(int horizontal, int vertical) override;
    int drawText(Point const & point, char const * text) override;
    Rect getClip() override;
    int setClip(float x1, float y1, float x2, float y2) override;
    int setClip(Rect rect) override;

    using FileDevice::drawImage;

private:
    static constexpr std::size_t NUM_PENS = 4;

    /// One pen, with the operators that set it up on the page (made anew when the pen changes).
    struct Pen
    {
        int color = 0;
        float width = 1;
        int line_style = 1;
        int fill_style = 0;
        bool is_changed = true;
        std::string setup;
    };

    [[nodiscard]] Pen * findPen(int pen);
    std::string const & setupOf(int pen);
    void applyItem(std::string_view item);
    void writeHeader();
    void writePath(Point const * points, std::size_t count);
    void writeSamples(Image const & image);
    /// At least `size` octets (at most the buffer's size) to write to; `used` tells how many were.
    [[nodiscard]] char * room(std::size_t size);
    void put(std::string_view text);
    void flush();

    File file;
    std::vector<char> buffer; // of a fixed size
    std::size_t used = 0;     // octets in it, not yet with the file
    bool is_open = false;
    bool is_broken = false; // output was lost
    bool is_color_capable = false;
    float width_pt = 0;
    float height_pt = 0;
    float offset_x = 0;
    float offset_y = 0;
    std::string file_name;
    std::string title;
    bool is_append = false;
    bool is_eps = false;
    bool is_color = false;
    bool is_portrait = false;
    float scale = 1;
    float width_factor = 1;
    int width_multiplier = 1;
    std::array<Pen, NUM_PENS> pens;
    int image_halign = 0;
    int image_valign = 0;
    Rect clip;
};

} // namespace Yul
