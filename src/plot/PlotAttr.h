// The attributes of a plot layer.
#pragma once

#include "core/Const.h"

namespace Yul {

/// A plot layer's colours, line, fill, font and marker, usually read from a short attribute text such as
/// "red:wi=2:st=dsh". A number that is Const::MISS and a text that is empty are not given: `update` fills
/// them from defaults, so that a layer says only what differs. A null text counts as an empty one.
class PlotAttr
{
public:
    PlotAttr() = default;

    /// As by `set`.
    explicit PlotAttr(char const * text) { set(text); }

    /// As by `set`.
    PlotAttr(char const * text, char const * defaults) { set(text, defaults); }

    /// Makes every field "not given".
    int init();

    /// Reads the attribute text, as `parse` does; with defaults, these fill what the text does not give.
    int set(char const * text);
    int set(char const * text, char const * defaults);

    /// Reads an attribute text: items separated by colons when it holds one, otherwise by commas. Fields that
    /// it does not give become "not given"; items that mean nothing are passed over. Keys in any case:
    ///   first item without "="   colour name          co=NAME   colour name      la=NAME   label colour name
    ///   wi=N or wN   line width, dots                 st=NAME, st=N or sN   line style, see Graph
    ///   sc=N, hi=N or hN   marker scale or text height, one and the same setting
    ///   we=N   text weight      te=N or eN   text expansion      fo=NAME   font
    ///   fi=NAME, fp=NAME or fN   fill style      sh=N   drop shadow
    int parse(char const * text);

    /// Code of a fill style name (on its first characters, any case), else the integer that the text begins
    /// with. Changes nothing here.
    int parseFillStyle(char const * text) const;
    /// Mark type of a marker name (any case), 2 (plus) for any other text. Changes nothing here.
    int parseMarker(char const * text) const;

    /// Stores a colour name; its index is to be looked up again.
    int setColor(char const * name);
    /// False when the colour name is empty or "off".
    [[nodiscard]] bool validColor() const;

    /// Fills every field that is not given from the defaults.
    int update(PlotAttr const & defaults);
    /// The same from the first and then from the second.
    int update(PlotAttr const & first, PlotAttr const & second);

    /// Lists the fields on one line on standard output.
    int print() const;

    float width = Const::MISS;     ///< line width, dots
    float size = Const::MISS;      ///< text height or marker scale
    float weight = Const::MISS;    ///< text weight
    float expansion = Const::MISS; ///< text expansion
    int style = Const::MISS;       ///< line style code
    int shadow = Const::MISS;      ///< drop shadow count
    int fill = Const::MISS;        ///< fill style code
    int color = Const::MISS;       ///< colour index
    /// Names, empty where they are not given; cut to what fits.
    char color_name[20] = "";
    char font[120] = "";
    char label_color[20] = "";
};

} // namespace Yul
