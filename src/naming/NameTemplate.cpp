#include "naming/NameTemplate.h"

#include "core/Const.h"
#include "core/Number.h"

#include <algorithm>

namespace Yul::detail {
namespace {

constexpr int MAX_COUNT = 9999;
constexpr std::size_t MAX_RESOURCE = 200;

struct CodeRow
{
    char letter;
    NameCode code;
    int seconds; // between two values; 0 for a code that sets no step
    char const * resource;
};

constexpr CodeRow CODES[] = {
    {'Y', NameCode::YEAR, 0, nullptr},           {'y', NameCode::YEAR00, 0, nullptr},
    {'m', NameCode::MONTH, 0, nullptr},          {'B', NameCode::MONTH_UPPER, 0, nullptr},
    {'b', NameCode::MONTH_LOWER, 0, nullptr},    {'d', NameCode::DAY, 86400, nullptr},
    {'j', NameCode::JULIAN, 86400, nullptr},     {'h', NameCode::HOUR, 3600, nullptr},
    {'n', NameCode::MINUTE, 60, nullptr},        {'e', NameCode::EXTENSION, 0, nullptr},
    {'f', NameCode::FORECAST, 0, nullptr},       {'C', NameCode::DIRECTORY, 0, "con_path"},
    {'D', NameCode::DIRECTORY, 0, "data_path"},  {'F', NameCode::DIRECTORY, 0, "file_path"},
    {'R', NameCode::DIRECTORY, 0, "raw_path"},   {'G', NameCode::DIRECTORY, 0, "grid_path"},
    {'I', NameCode::DIRECTORY, 0, "image_path"}, {'W', NameCode::DIRECTORY, 0, "watch_path"},
    {'T', NameCode::DIRECTORY, 0, "text_path"},  {'M', NameCode::DIRECTORY, 0, "model_path"},
    {'S', NameCode::DIRECTORY, 0, "sat_path"},
};

CodeRow const * findCode(char letter)
{
    auto const * const row = std::find_if(std::begin(CODES), std::end(CODES),
                                          [&](CodeRow const & r) { return r.letter == letter; });
    return row != std::end(CODES) ? row : nullptr;
}

void appendText(NameTemplate & pieces, char c)
{
    if (pieces.empty() || pieces.back().code != NameCode::TEXT)
        pieces.emplace_back();
    pieces.back().text += c;
}

/// Takes the number in front of a code letter; 1 where there is none.
int takeCount(std::string_view & text)
{
    if (text.empty() || !isDigit(text.front()))
        return 1;
    int count = 0;
    for (; !text.empty() && isDigit(text.front()); text.remove_prefix(1))
        count = std::min(count * 10 + (text.front() - '0'), MAX_COUNT);
    return count;
}

/// Takes the code that follows a "%".
void takeCode(NameTemplate & pieces, std::string_view & text)
{
    int const count = takeCount(text);
    if (text.empty())
        return;
    char const letter = text.front();
    text.remove_prefix(1);
    if (letter == '%') {
        appendText(pieces, '%');
    } else if (letter == '{') {
        std::string_view const name = text.substr(0, text.find('}'));
        if (!text.empty())
            pieces.push_back({NameCode::DIRECTORY, count, std::string(name.substr(0, MAX_RESOURCE))});
        text.remove_prefix(std::min(name.size() + 1, text.size()));
    } else if (CodeRow const * const row = findCode(letter)) {
        pieces.push_back({row->code, count, row->resource != nullptr ? row->resource : ""});
    } else {
        pieces.push_back({NameCode::KEY, count, std::string(1, letter)});
    }
}

} // namespace

NameTemplate parseNameTemplate(std::string_view text)
{
    NameTemplate pieces;
    while (!text.empty()) {
        char const c = text.front();
        text.remove_prefix(1);
        if (c == '%')
            takeCode(pieces, text);
        else if (c != '{' && c != '}')
            appendText(pieces, c == ' ' ? '_' : c);
    }
    return pieces;
}

int nameTemplateStep(NameTemplate const & pieces)
{
    int step = Const::MISS;
    for (NamePiece const & piece : pieces) {
        auto const * const row = std::find_if(std::begin(CODES), std::end(CODES),
                                              [&](CodeRow const & r) { return r.code == piece.code; });
        if (row == std::end(CODES) || row->seconds == 0)
            continue;
        int const seconds =
            row->seconds * std::max(piece.count, 1); // below 2^31: the count is held to four digits
        step = isMissing(step) ? seconds : std::min(step, seconds);
    }
    return step;
}

} // namespace Yul::detail
