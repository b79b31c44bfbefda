// The drawing front end.
#pragma once

#include "core/String.h"
#include "geo/Point.h"
#include "geo/Rect.h"
#include "graphics/Device.h"
#include "graphics/GFont.h"
#include "graphics/GTran.h"
#include "graphics/Listener.h"
#include "graphics/Symbol.h"

#include <array>
#include <memory>
#include <string>
#include <string_view>

namespace Yul {

class Image;
class RGB;

namespace detail {
struct PlacedGlyph;
struct TextLine;
} // namespace detail

/// Draws lines, fills, text, marks, symbols and images on one output device. Positions and sizes are in
/// "window" coordinates of the current transform (see GTran); colours are the values that `allocColor` or
/// `ColorMap::getValue` give. Every operation returns 0, and does nothing, when there is no device; state
/// setters also when the value is the present one (so a device hears of a change once) or makes no sense (a
/// number that is not one, a negative size). A figure with a coordinate that is not a number is not drawn and
/// gives 0; coordinates beyond 30000 device units are drawn at 30000.
class Graph : public Listener
{
public:
    static constexpr int NUM_TRANS = 4;

    Graph();
    /// Chooses the device, as `setDevice` does; `open` opens it.
    Graph(char const * device_name, char const * params);
    Graph(Graph const &) = delete;
    Graph & operator=(Graph const &) = delete;
    ~Graph() override; ///< closes the graph: an open page is finished

    /// Chooses the device: "postscript", "hpgl", "meta" (exactly), any other name the window. The
    /// comma-separated parameters go to the device; an item "hfont" among them makes the device draw text. An
    /// open graph is closed first. Returns 1; a device that is not part of this build gets a message here,
    /// and `open` then returns 0.
    int setDevice(char const * name, char const * params);

    /// The kind of device chosen (DeviceKind).
    [[nodiscard]] int getDeviceKind() const noexcept { return device_kind; }

    /// Opens the device (the window when none was chosen), sets all drawing state to its initial values and
    /// loads font and symbols. 0 when the device cannot be opened; 1 and no change for an open graph.
    int open();
    int open(char const * device_name, char const * params);

    /// Whether a device is open.
    [[nodiscard]] bool isOpen() const noexcept { return is_open; }

    /// Finishes the output and lets go of the device; 0 when output was lost (the device has said so).
    int close();

    // ---- the device ----
    /// For windows: bring up to date, show, hide, make empty. A page takes these and stays as it is.
    int update();
    int manage();
    int unmanage();
    int clear();
    int clearRect(Rect const & rect); ///< window coordinates
    /// The title of the window or document.
    int setTitle(char const * title);
    /// For windows: as an icon, of a fixed size, size and place in device units, black and white changed
    /// round, the colour behind the drawing by its name. A page takes these and stays as it is.
    int setIcon(bool is_icon);
    int setFixed(bool fixed);
    int setSize(float width, float height);
    int setOffset(float x, float y);
    int setInverse(bool is_inverse);
    int getInverse();
    int setBackground(char const * color);
    /// The name of the device; 0 without one.
    int getDevice(String & name);
    /// For windows: the shape of the pointer, the loudness of the bell.
    int setCursor(int cursor);
    int bell(int volume);
    /// A line for the user, on standard output where there is no window.
    [[gnu::format(printf, 2, 3)]] int message(char const * format, ...);
    /// For windows: frames of a loop. A page is one frame, and takes these and stays as it is.
    int newFrame();
    int newFrame(int frame);
    int setFrame(int frame);
    int getFrame();
    int deleteFrame(int frame);
    int getNumFrames();
    int isLooping();

    // ---- transforms, 0 to 3; a number outside is refused ----
    /// Makes a transform the current one.
    int setTran(int tran);

    /// The number of the current transform.
    [[nodiscard]] int getTran() const noexcept { return current; }

    /// What the viewport shows, window coordinates, and where the viewport lies, NDC: of the current
    /// transform, or of another.
    int setWindow(Rect const & rect);
    int setWindow(int tran, Rect const & rect);
    int setViewport(Rect const & rect); ///< NDC
    int setViewport(int tran, Rect const & rect);
    /// Window and viewport of the current transform; valid until they change.
    [[nodiscard]] Rect const & getWindow() const;
    int getWindow(Rect & rect) const;
    [[nodiscard]] Rect const & getViewport() const;
    int getViewport(Rect & rect) const;
    /// The largest viewport: the whole NDC rectangle.
    [[nodiscard]] Rect const & getMaxViewport() const;
    int getMaxViewport(Rect & rect) const;
    /// The viewport in device units, ordered.
    [[nodiscard]] Rect const & getDeviceViewport() const;
    int getDeviceViewport(Rect & rect) const;

    /// Sets the largest viewport of a given width : height inside a rectangle.
    /// rect    NDC; a negative corner coordinate is an inset from its own edge of the NDC rectangle (Rect::setu
    ///         leaves corners where they are).
    /// aspect  width : height; 0 keeps the rectangle's own.
    /// halign  1 left, 3 right, else centred; valign  1 bottom, 3 top, else centred.
    int setViewportAspect(Rect const & rect, float aspect, int halign = 2, int valign = 2);

    /// Device units to window coordinates, and to NDC.
    int tranPlotWindow(float plot_x, float plot_y, float & x, float & y) const;
    int tranPlotWindow(float plot_x, float plot_y, Point & point) const;
    int tranPlotView(float plot_x, float plot_y, float & x, float & y) const;
    int tranPlotView(float plot_x, float plot_y, Point & point) const;
    /// Window coordinates of transform `from` to those of transform `to`.
    int tranWindow(int from, float from_x, float from_y, int to, float & x, float & y) const;
    int tranWindow(int from, float from_x, float from_y, int to, Point & point) const;
    int printTran() const; ///< lists the current transform on standard output
    /// A transform itself; the current one for a number outside 0 to 3.
    [[nodiscard]] GTran const & getTransform(int tran) const;

    /// Clips all that follows to a rectangle in window coordinates; without one, to the whole device.
    int setClip(Rect const & rect);
    int setClip();

    // ---- colours ----
    /// Components 0 to 1; returns the device's value for the colour.
    int allocColor(float r, float g, float b);
    int allocColor(RGB const & rgb);

    // ---- lines ----
    /// The colour as allocColor gives it.
    int setLineColor(int color);
    int setLineWidth(float width); ///< in the device's dots
    int setLineStyle(int style);   ///< 1 solid, 2 dashed, 3 long gaps, 4 dash-dot, 5 dotted
    /// Lines from point to point, and the outlines of rectangles and circles; a radius in window units.
    int drawLine(float x1, float y1, float x2, float y2);
    int drawLine(Point const & from, Point const & to);
    int drawLine(Points const & points);
    int drawRect(Rect const & rect);
    int drawCircle(float x, float y, float radius);

    // ---- fills ----
    /// The colour as allocColor gives it, and the code of a pattern, see PlotAttr::parseFillStyle.
    int setFillColor(int color);
    int setFillStyle(int style);
    /// Fills the inside of a polygon, which is closed by itself, or of a rectangle.
    int drawFill(Points const & points);
    int drawFill(Rect const & rect);
    int drawFillarea(Points const & points);

    // ---- text ----
    /// A font file or alias of the font list; a name that begins with "#" is the device's own font.
    int setFont(char const * name);

    /// The font as it was set last; valid until another is.
    [[nodiscard]] char const * getFont() const noexcept { return font_name.c_str(); }

    /// The colour as allocColor gives it.
    int setTextColor(int color);
    int setTextHeight(float height); ///< height of a capital letter, window units
    int setTextWeight(float weight); ///< width of the strokes, in the device's dots
    /// How much wider than high characters become; 1 leaves them as they are.
    int setTextExpansion(float factor);
    int setTextSpacing(float factor); ///< gap between characters, in text heights
    /// Above 0: all characters are this many text heights wide, before expansion. 0: each has its own width.
    int setTextCharWidth(float width);
    /// The text's "up" direction.
    int setTextDirection(float dx, float dy);
    /// Horizontally 0 or 1 left, 2 centre, 3 right. Vertically 0 puts the last line of the text on the
    /// position, 1 and 2 the first line, 3 the middle one.
    int setTextAlign(int horizontal, int vertical);
    /// Above 0: text stands on a filled box of this colour.
    int setTextBoxColor(int color);
    int setDropColor(int color);  ///< of the shadow under text
    int setDropShadow(int count); ///< how many steps it is deep, 0 for none

    /// How many steps the shadow is deep.
    [[nodiscard]] int getDropShadow() const noexcept { return drop_count; }

    /// Width of the shadow's strokes, in the device's dots; 0 for that of the text.
    int setDropWidth(int width);
    /// Draws UTF-8 text; newlines separate lines of at most 100 characters each.
    int drawText(float x, float y, char const * text);
    int drawText(Point const & point, char const * text);
    [[gnu::format(printf, 4, 5)]] int drawFormText(float x, float y, char const * format, ...);
    /// One line with the stroke font, with its baseline through the position.
    int drawTextLine(float x, float y, char const * line);
    /// Ink width of the widest line with the stroke font, window units (measured across the page when the
    /// window's axes have different scales); 0 without a font.
    [[nodiscard]] float getTextWidth(char const * text) const;

    // ---- marks and symbols ----
    /// The colour as allocColor gives it, of symbols and wind barbs as well.
    int setMarkColor(int color);
    int setMarkSize(float size); ///< window units
    /// 1 point, 2 plus, 3 star, 4 circle, 5 cross, 6 square, 7 triangle, 8 dot, 9 inverted triangle,
    /// 10 lightning; marks of other types draw nothing
    int setMarkType(int type);
    int setMarkWeight(float weight);                ///< width of its strokes, in the device's dots
    int drawMark(float x, float y);                 ///< one of the type and size that are set
    int drawMarkLine(float x, float y, float size); ///< one of that size, drawn with lines
    /// The symbol file, in the database directory.
    int setSymbol(char const * name);
    /// A symbol of the set in the mark colour; 0 for an unknown name.
    int drawSymbol(float x, float y, char const * name, float size);
    /// The same, turned clockwise about the position.
    /// angle  degrees
    int drawSymbol(float x, float y, char const * name, float size, float angle);
    /// A wind barb, or a ring for a calm, in the mark colour.
    /// direction  where the wind blows from, degrees clockwise from the top of the page
    /// speed      knots, drawn to the nearest 5; above the set's greatest barb that one is drawn
    /// size       window units; the shaft is half as long
    /// is_south   feathers as on the southern hemisphere
    /// return     1; 0 for a number that is none, a negative speed, or a set without barbs
    int drawWindBarb(float x, float y, float direction, float speed, float size, bool is_south = false);

    // ---- images ----
    /// What of an image lies on its position: horizontally 0 or 1 left, 2 centre, 3 right; vertically 0 or 1
    /// bottom, 2 centre, 3 top.
    int setImageAlign(int horizontal, int vertical);
    /// Draws an image, a sample on a device unit; in a window into one frame of a loop. 0 for an empty one.
    int drawImage(Image const & image, float x, float y);
    int drawImage(Image const & image, int frame, float x, float y);
    /// What a window shows; 0 and an empty image for a page.
    int getImage(Image & image);

    // ---- callbacks (window only) ----
    /// Has the listener told of an event of that name, or tells all of them.
    int addCallback(char const * name, Listener * listener, void const * data);
    int doCallback(char const * name, char const * event);
    int callback(char const * name, char const * event, void const * data) override;

private:
    static constexpr char const * DEFAULT_FONT = "modern.fnt";
    static constexpr char const * DEFAULT_SYMBOLS = "wx.smb";

    enum FontKind { NO_FONT = 0, STROKE_FONT = 1, DEVICE_FONT = 2, SCALABLE_FONT = 3 };

    struct Frame; // where and how one line of text stands on the device

    void initState();
    template <class Value, class Send> int change(Value & cached, Value value, Send send);
    template <class Value> int store(Value & stored, Value value, bool is_sensible);

    [[nodiscard]] GTran const & tran() const noexcept { return trans[static_cast<std::size_t>(current)]; }

    [[nodiscard]] Rect toPlot(Rect const & rect) const;
    [[nodiscard]] bool toPlot(Points const & points, Points & plot_points) const;

    [[nodiscard]] static std::string findFont(std::string const & name);
    void warnFont() const;
    int loadFont();
    int applyDeviceFont();
    int loadSymbols();
    int drawShape(float x, float y, Symbol::Shape const * shape, float size, float angle, bool is_mirrored);

    [[nodiscard]] bool isDeviceText() const noexcept;
    [[nodiscard]] Frame textFrame(float x, float y) const;
    [[nodiscard]] Point lineStep() const;
    [[nodiscard]] detail::TextLine layOut(std::string_view line) const;
    int drawShadowedLine(Frame const & frame, std::string_view line);
    int drawDeviceLine(Frame const & frame, std::string_view line);
    int strokeLine(Frame const & frame, std::string_view line, float weight);
    [[nodiscard]] float strokeWidth(Frame const & frame, float weight) const;
    int strokeGlyph(Frame const & frame, detail::PlacedGlyph const & placed);
    int drawBox(Frame const & frame, std::string_view line);

    std::unique_ptr<Device> device;
    bool is_open = false;
    bool is_fixed = false;
    int device_kind = NO_DEVICE;
    std::array<GTran, NUM_TRANS> trans;
    int current = 0;
    int font_kind = STROKE_FONT;
    std::string font_name;
    std::string font_spec;
    GFont font;
    std::string symbol_name;
    Symbol symbols;
    int line_color = 1;
    float line_width = -1;
    int line_style = 1;
    int fill_color = 1;
    int fill_style = 0;
    int hfont = 0;
    int text_color = 1;
    float text_weight = 1;
    float text_height = 0.01F;
    float text_expansion = 1;
    float text_spacing = 0.25F;
    float text_char_width = 0;
    int text_halign = 0;
    int text_valign = 0;
    float text_up_x = 0;
    float text_up_y = 1;
    int text_box_color = 0;
    int drop_color = 1;
    int drop_count = 0;
    int drop_width = 0;
    int mark_type = 1;
    float mark_size = 0.01F;
    float mark_weight = 1;
    int mark_color = 1;
    Points scratch;
};

/// Sends a value that is new to the device and remembers it.
template <class Value, class Send> int Graph::change(Value & cached, Value value, Send send)
{
    if (!device || value == cached)
        return 0;
    send();
    cached = value;
    return 1;
}

} // namespace Yul
