// The texts round a plot.
#pragma once

#include "core/Const.h"
#include "time/Date.h"
#include "time/ForeTime.h"
#include "time/Timezone.h"

#include <string>
#include <string_view>

namespace Yul::detail {

/// The positions of labels and images: upper, lower and middle row; left, centre and right.
enum LabelPosition {
    NO_POSITION = -1,
    UPPER_LEFT = 0,
    UPPER_CENTER,
    UPPER_RIGHT,
    LOWER_LEFT,
    LOWER_CENTER,
    LOWER_RIGHT,
    NUM_LABELS, ///< positions from here on are for images only
    MIDDLE_LEFT = NUM_LABELS,
    MIDDLE_CENTER,
    MIDDLE_RIGHT
};

/// The position of "ul", "uc", "ur", "ll", "lc", "lr", "cl", "cc" or "cr" in any case; NO_POSITION for
/// another text.
[[nodiscard]] LabelPosition findPosition(std::string_view name);

/// What the codes of a label stand for. Empty texts and missing numbers are not known.
struct LabelFacts
{
    std::string plot_name;
    std::string title;
    std::string var_name;
    std::string var_long_name;
    std::string level;
    std::string units;
    std::string model;
    Date date;  ///< initial time
    Date valid; ///< the time for which the field holds
    ForeTime fore;
    Timezone zone; ///< the zone that times are shown in
    float interval = Const::MISS;
    float min = Const::MISS;
    float max = Const::MISS;
};

/// Puts the facts in place of a label's codes:
///   %v  variable, long name          %n  variable, short name     %l  level         %u  units
///   %t  valid time                   %i  initial time             %f  forecast and valid time
///   %h  forecast hour                %m  model                    %c  contour interval
///   %a  smallest value               %z  largest value            %d  the time now
///   %p  name of the plot             %T  its title                %%  a percent sign
///   {...}  left out as a whole when a code in it stands for nothing        \\n  a new line
/// Any other character after "%" stands for itself.
[[nodiscard]] std::string expandLabel(std::string_view text, LabelFacts const & facts);

/// True for a label that is a picture: "im:..." or "if:...".
[[nodiscard]] bool isImageLabel(std::string_view text);

/// A number with no more decimals than it takes.
[[nodiscard]] std::string plainNumber(float value);

} // namespace Yul::detail
