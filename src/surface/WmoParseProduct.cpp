// Collecting the lines of whole bulletins.
#include "core/Const.h"
#include "core/StrLib.h"
#include "core/Yul.h"
#include "surface/WmoParse.h"
#include "surface/WmoProduct.h"

#include <algorithm>
#include <new>

namespace Yul {
namespace {

constexpr std::size_t MAX_BULLETIN = std::size_t{1} << 26;

} // namespace

int WmoParse::getProduct(WmoProduct & product)
{
    try {
        return findProduct(product);
    } catch (std::bad_alloc const &) {
        Yul::outError("WmoParse::getProduct: %s: Out of memory\n", get(file_index));
        product.init();
        return 0;
    }
}

int WmoParse::findProduct(WmoProduct & product)
{
    always_matches = true;
    is_tracing = Yul::isDebug(6);
    is_new_product = false;
    bool is_rest = isSelected() && std::max(state, previous_state) >= detail::LINE_DATA;
    for (;; is_rest = false) {
        product.set("", "", Const::MISS);
        if (is_rest)
            describe(product);
        if (!collect(product, is_rest)) {
            product.init();
            return 0;
        }
        product.finish();
        if (!is_rest || !detail::trimmed(product.text).empty())
            return 1;
    }
}

void WmoParse::describe(WmoProduct & product) const
{
    bool const is_same_file = StrLib::equal(product.Filename::get(), get(file_index)) &&
                              StrLib::equal(product.getIndex(), getIndex(file_index));
    if (!is_same_file)
        product.Filename::set(get(file_index), getIndex(file_index));
    product.set(heading.c_str(), identifier.c_str(), bulletin_position);
}

/// Adds the lines of the next bulletin, or of the one that has been found, up to where another begins. False
/// when there is none.
bool WmoParse::collect(WmoProduct & product, bool is_found)
{
    bool is_ended = false;
    std::string_view line;
    while (product.text.size() < MAX_BULLETIN && nextRawLine(line)) {
        bool const is_beginning = beginsBulletin(line);
        if (is_beginning && previous_state == detail::LINE_HEADING && expects_identifier) {
            endHeading(); // there is no identifier, nor anything else
            is_found = isSelected();
            describe(product);
        }
        if (is_beginning && is_found) {
            feed.putBack();
            state = previous_state = is_at_known_place ? detail::LINE_NONE : detail::LINE_UNSELECTED;
            heading_matches = is_at_known_place;
            return true;
        }
        classify(line);
        trace(line);
        if (isHeadingEnd() && isSelected()) {
            is_found = true;
            describe(product);
        }
        if (!isData())
            continue;
        if (!is_found)
            describe(product);
        is_found = true;
        collectData(product, line, is_ended);
    }
    return is_found;
}

/// Adds a data line, and those that follow it.
/// is_ended  whether the mark ETX has been met, which ends the text
void WmoParse::collectData(WmoProduct & product, std::string_view line, bool & is_ended)
{
    line = detail::withoutLineEnd(line);
    if (line.ends_with('\x03')) {
        line.remove_suffix(1);
        is_ended = true;
    }
    if ((is_ended || skips_blank) && detail::trimmed(line).empty())
        return;
    product.addLine(line, state);
    if (!is_ended)
        collectPlainLines(product);
}

/// Adds the lines that follow a data line of a selected bulletin, as long as nothing has to be decided about them:
/// the quick way through most of a feed.
void WmoParse::collectPlainLines(WmoProduct & product)
{
    if (is_tracing || skips_blank || !isSelected())
        return;
    long position = feed.position();
    for (std::string_view line; product.text.size() < MAX_BULLETIN && feed.next(line);
         position = feed.position()) {
        bool const is_plain =
            line[0] > '\x03' && line[0] != '*' && line[0] != '$' && !feed.isRest() && !feed.isCut();
        if (!is_plain || detail::withoutLineEnd(line).ends_with('\x03')) {
            feed.putBack();
            return;
        }
        line_position = position;
        state = detail::dataLineCode(line);
        product.addLine(line, state);
    }
}

/// Whether the line read last is the last of a bulletin's head.
bool WmoParse::isHeadingEnd() const
{
    return state == (expects_identifier ? detail::LINE_IDENTIFIER : detail::LINE_HEADING);
}

} // namespace Yul
