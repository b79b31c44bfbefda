// Collecting the lines of whole bulletins.
#include "core/Const.h"
#include "core/StrLib.h"
#include "core/Yul.h"
#include "surface/WmoParse.h"
#include "surface/WmoProduct.h"

#include <algorithm>
#include <array>
#include <new>

namespace Yul {
namespace {

constexpr std::size_t MAX_BULLETIN = std::size_t{1} << 26;
constexpr std::size_t BLOCK = 4096; // of lines that are put together in the processor's nearest cache

/// Whether a data line goes into a bulletin without a question: it begins no other, ends none and is no "$$".
bool isPlain(char first, std::string_view line)
{
    return first > '\x03' && first != '*' && first != '$' && !line.ends_with('\x03');
}

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
        bool const lacks_identifier = previous_state == detail::LINE_HEADING && expects_identifier;
        bool const is_beginning = (is_found || lacks_identifier) && beginsBulletin(line);
        if (is_beginning && lacks_identifier) {
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
        if (is_tracing)
            trace(line);
        if (state == headEnd() && isSelected()) {
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
        line = detail::withoutLineEnd(line.substr(0, line.size() - 1));
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
    while (product.text.size() + BLOCK <= MAX_BULLETIN && collectBlock(product)) {
    }
}

/// Adds the plain lines at the beginning of the block that comes next. False when the one behind them is not plain.
bool WmoParse::collectBlock(WmoProduct & product)
{
    std::string_view const block = feed.ahead(BLOCK);
    std::array<char, BLOCK> text;
    std::array<char, BLOCK> codes;
    std::size_t size = 0;
    std::size_t count = 0;
    std::size_t begin = 0;
    bool is_plain = true;
    for (std::size_t end = 0; (end = block.find('\n', begin)) != std::string_view::npos; begin = end + 1) {
        std::string_view const line = detail::withoutLineEnd(block.substr(begin, end - begin));
        is_plain = isPlain(block[begin], line);
        if (!is_plain)
            break;
        line_position = feed.position() + static_cast<long>(begin);
        state = detail::dataLineCode(line);
        codes[count++] = static_cast<char>(state);
        line.copy(text.data() + size, line.size());
        size += line.size();
        text[size++] = '\n';
    }
    product.addLines({text.data(), size}, {codes.data(), count});
    feed.pass(begin);
    return is_plain && begin > 0;
}

} // namespace Yul
