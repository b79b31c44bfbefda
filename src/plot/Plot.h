// The plot: device, colours, map and the texts round it.
#pragma once

#include "core/String.h"
#include "geo/Domain.h"
#include "graphics/ColorMap.h"
#include "graphics/Graph.h"
#include "graphics/Listener.h"
#include "plot/ColorBar.h"
#include "plot/DrawList.h"
#include "plot/GeomBox.h"
#include "plot/Graticule.h"
#include "plot/LabelText.h"
#include "plot/Layout.h"
#include "plot/PlotAttr.h"

#include <array>
#include <string>

namespace Yul {

/// A picture: it opens the device that the settings name, loads the colour table, lays out map and labels,
/// and holds what all plot layers share. A layer (ContPlot) draws into it; then come border and labels, and
/// `close` finishes the page:
///
///     Plot plot;
///     plot.open("map.ps,color");
///     contours.draw(plot, grid);
///     plot.drawBorder();
///     plot.drawLabels();
///     plot.close();
///
/// The map takes transform 0 of the graph, with the plane of the plot domain as its window; transform 1
/// measures the whole page in NDC. Every layer leaves the graph with that of the map. Texts may be null, which
/// counts as empty. Operations return 1, or 0 for failure.
class Plot : public Listener
{
public:
    static constexpr int COLOR_CAPACITY = 512;
    static constexpr int MAP_TRAN = 0;
    static constexpr int PAGE_TRAN = 1;

    Plot();
    ~Plot() override = default; ///< closes the plot
    Plot(Plot const &) = delete;
    Plot & operator=(Plot const &) = delete;

    /// Forgets everything that was set; an open plot is closed.
    int init();

    /// Opens the plot by the settings "device", "geometry", "inverse", "background", "icon", "title", "name",
    /// "logo", "draw", "timezone", "parameter", "color_table", "color_label" and "plot_domain".
    /// params  overrides, separated by commas: "de=" device, "ge=" geometry, "ct=" a further colour table,
    ///         and the items of `setParam`. Where the device setting has no parameters of its own the whole
    ///         text also goes to the device, whose first parameter is the file name.
    /// return  0, with a message from whoever failed, when the plot domain cannot be read or the device
    ///         cannot be opened.
    int open(char const * params);

    /// The same without overrides.
    int open() { return open(nullptr); }

    /// Whether a page is open.
    [[nodiscard]] bool isOpen() const noexcept { return graph.isOpen(); }

    /// Finishes the page; 0 when nothing was open or output was lost.
    int close();

    /// The file that the page goes to, as it was named; empty for a window, a command or a plot that was not
    /// opened. Valid until the plot is opened again.
    [[nodiscard]] char const * getFile() const noexcept { return file_name.c_str(); }

    /// Both live as long as the plot.
    [[nodiscard]] Graph & getGraph() noexcept { return graph; }

    /// The plot's colours.
    [[nodiscard]] ColorMap & getColorMap() noexcept { return colors; }

    /// The device's value for a colour name; for one that is not known (or none) that of the fallback.
    [[nodiscard]] int findColor(char const * name, char const * fallback);
    /// The same for the colour of attributes: its name, or its index where there is no name.
    [[nodiscard]] int findColor(PlotAttr const & attr, char const * fallback);

    /// Which parts are drawn: a list such as "map,bord" or "-text", see detail::decodeDrawList. Until a list
    /// is given all parts are drawn, although every switch is off.
    int setDrawing(char const * list);
    /// Switch i, 0 for an index outside 0 to 12.
    [[nodiscard]] int getDrawing(int i) const noexcept;
    /// True when the part of that switch is to be drawn.
    [[nodiscard]] bool isDrawn(int i) const noexcept;
    /// Lists the switches on standard output.
    int printDrawing() const;

    /// Reads "WxH", "WxH+X-Y" or "+X-Y". Returns 1 (size only), 2 (size and offset), 3 (offset only), or 0
    /// when the text is none of these; the box then stays as it was.
    int decodeGeometryStr(char const * text, GeomBox & box) const;

    /// Plot parameters, separated by commas; others are passed over:
    ///   ti=TEXT    title, over all panels where there are several
    ///   bg=COLOR   background               ic         iconic window       inv   white on black
    ///   col=COLOR  colour of the border     tz=ZONE    zone of label times
    ///   pan=RxC    panels; those inside the page share the tick labels of the outer ones
    ///   full_lab   every panel has tick labels on all sides and a colour bar of its own
    ///   full       the map fills its panel, corner labels stand inside it
    ///   bar[=right|bottom|off]   a bar with the colours of the layer that fills or colours by level
    ///   lo=FILE[:POS]   logo in a corner of the map ("lr" unless given)
    ///   trans_col=COLOR   colour of logos that is not drawn
    int setParam(char const * params);

    /// The plane and the part of it that is drawn. 0, and nothing changes, for a domain without limits.
    int setDomain(Domain const & value);
    /// The domain of the plot where it has one, else this one, which it keeps: for layers, before they draw. 0 when
    /// neither has limits.
    int useDomain(Domain const & value);

    /// The plot domain, missing where none is set.
    [[nodiscard]] Domain const & getDomain() const noexcept { return domain; }

    /// The part of the plane inside the frame.
    [[nodiscard]] Rect const & getFrame() const { return domain.getLimits(); }

    /// The next panel, with the settings of `setParam`; behind the last comes the first again. The labels and the
    /// plot domain are forgotten, but for the domain of the settings.
    int newPanel(char const * params);

    /// Where panel, frame and labels stand.
    [[nodiscard]] detail::PanelLayout const & getLayout() const noexcept { return layout; }

    /// Parallels and meridians in the plane of the plot.
    /// attr  attributes, or an attribute text, for the lines; steps in degrees, Const::MISS for suitable ones.
    int drawGraticule(PlotAttr const & attr, float lat_step, float lon_step);
    int drawGraticule(char const * attr, float lat_step, float lon_step);
    int drawGraticule(char const * attr);

    /// The same with plain lines at suitable steps.
    int drawGraticule() { return drawGraticule(nullptr); }

    /// Frame, ticks where the graticule meets it, and their labels.
    int drawBorder();

    /// Position of "ul", "uc", "ur", "ll", "lc", "lr" (0 to 5), "cl", "cc", "cr" (6 to 8); -1 for another.
    [[nodiscard]] int getLabelPosIndex(char const * name) const;
    /// The text of a corner label, with the codes of `formatLabel`; empty for none. 0 for another position.
    int setLabel(char const * position, char const * text);
    int setLabel(int position, char const * text);
    /// A label that a layer proposes: it takes the place where no label was set.
    int proposeLabel(int position, char const * text);
    /// Puts facts in place of the codes of a label, see detail::expandLabel.
    /// out  at least `size` octets; what does not fit is cut off. 0 when there is no room at all.
    int formatLabel(char const * in, char * out, int size) const;
    int formatLabel(char const * in, String & out) const;
    /// A label may also be a picture: "im:NAME" or "if:NAME", or "im:NAME:X:Y" for another place, see
    /// drawImage.
    /// Draws the six labels, the colour bar, the logo and the title over all panels.
    int drawLabels();
    /// Forgets all labels.
    int clearLabels();

    /// What the colour bar shows: a layer tells it. `drawBar` draws it where the parameters have asked for one.
    int setColorBar(detail::ColorBar value);

    /// What the colour bar shows.
    [[nodiscard]] detail::ColorBar const & getColorBar() const noexcept { return color_bar; }

    /// The key to the colours of the layer, where parameters asked for one.
    int drawBar();

    /// Draws a picture file (PNG) at a place of the page in NDC. The file is looked for by its name, then in
    /// the folder of the setting "image_path", then in the database directory; a name without an ending gets
    /// ".png".
    /// position  which place of the picture lies on (x, y): "ul" its upper left corner to "lr", "cl", "cc" and
    ///           "cr"; null counts as "ll". Where x or y is Const::MISS it stands inside the frame of the map
    ///           at that position.
    /// return    0 for another position; 0 with the message "Logo not found" for a file that is not there.
    int drawImage(char const * file, float x, float y, char const * position);

    /// Copies the picture from the device to a file in the folder of the setting "image_path": NAME.gif with
    /// at most 40 characters of the name or NAME.png with at most 5, numbered for the frames of a loop.
    /// name  null or empty for the plot's name, without one "output"
    /// type  "gif" or "png"; null for the type that the setting "output" names, else "png"
    /// return 0 with a message when the device has no picture to copy (a file device has none) or the file
    ///        cannot be written. `close` does the same where the setting "output" asks for it.
    int saveImage(char const * name, char const * type);

    /// The same with the type that the setting names.
    int saveImage(char const * name) { return saveImage(name, nullptr); }

    /// What the codes of labels stand for: layers fill it in.
    [[nodiscard]] detail::LabelFacts & getFacts() noexcept { return facts; }

    /// printf-style text on the graph, see Graph::drawFormText.
    [[gnu::format(printf, 4, 5)]] int drawFormText(float x, float y, char const * format, ...);
    /// A line for the user, see Graph::message.
    [[gnu::format(printf, 2, 3)]] int message(char const * format, ...);

    /// Takes an event of the graph, see Listener.
    int callback(char const * name, char const * event, void const * data) override;

private:
    struct DeviceChoice
    {
        std::string name;
        std::string params;
    };

    struct Label
    {
        std::string text;
        bool is_set = false; // by the user, not by a layer
    };

    [[nodiscard]] static DeviceChoice chooseDevice(char const * params);
    void readSettings(char const * params);
    void applyGeometry(char const * params);
    void loadColors(char const * params);
    int setUpPanel();
    int showDomain();
    void drawTicks();
    void drawTickLabel(detail::GraticuleTick const & tick, Point const & place, float & free_from);
    void drawLabelRow(int first, Rect const & view);
    void drawTitle();
    void drawLogo();
    [[nodiscard]] bool drawImageLabel(int position, std::string const & text, Point const & place);
    int placeImage(std::string const & file, Point const & place, int position, Point const & most);
    int saveFrame(std::string const & name, std::string const & type, int frame);
    void drawBarAt(Rect const & place, bool is_upright);
    void startText(float height, float weight);
    [[nodiscard]] char const * labelColor() const;

    [[nodiscard]] char const * plainColor() const { return is_inverse ? "white" : "black"; }

    Graph graph;
    ColorMap colors{COLOR_CAPACITY};
    detail::DrawSwitches draw;
    bool has_draw_list = false;
    bool is_inverse = false;
    std::string file_name;
    std::string logo;
    std::string transparent_color;
    std::string output_type; // of the picture to write at the end; empty for none
    std::string border_color;
    detail::PageStyle style;
    detail::ColorBar color_bar;
    int panel = 0;
    detail::PanelLayout layout;
    Domain setting_domain; // what the settings say, missing without
    Domain domain;
    detail::GraticuleStep steps; // of the graticule that was drawn, for the ticks
    std::array<Label, detail::NUM_LABELS> labels;
    detail::LabelFacts facts;
};

} // namespace Yul
