// The sections of a message of edition 2.
#include "core/Format.h"
#include "grid/grib/Edition2.h"
#include "grid/grib/Reader.h"

#include <algorithm>

namespace Yul::detail::grib {
namespace {

constexpr std::uint64_t MAX_SECTION = 10000000;
constexpr std::size_t BITMAP_HEAD = 6; // of sections 6 and 7 no more is looked at

} // namespace

bool Reader::nextOfEdition2(Field & field)
{
    while (auto const found = passSection2()) {
        auto const [number, extent] = *found;
        std::uint64_t const head = number >= 6 ? BITMAP_HEAD : LARGEST_HEAD;
        if (takeSection2(Section(input.view(extent.position, std::min(head, extent.length))), number,
                         extent)) {
            complete(here.state);
            field = here.state;
            return true;
        }
    }
    return false;
}

/// Moves behind the next section; none where the message ends, or is damaged and left.
std::optional<Reader::Numbered> Reader::passSection2()
{
    if (here.position + END_MARK > here.message_end) {
        abandon("its end is not marked", here.position);
        return {};
    }
    Section head(input.view(here.position, 5));
    if (head.u8(1) == '7' && head.u8(2) == '7') {
        leave(here.position + END_MARK);
        return {};
    }
    Numbered const section{head.u8(5), {here.position, head.u32(1)}};
    if (!head.isShort() && section.extent.length > MAX_SECTION) {
        warn(format("readSection: invalid length: %d\n", static_cast<int>(section.extent.length)));
        searchOn(here.position);
        return {};
    }
    std::string const fault = head.isShort() ? "cut short" : faultOf(section);
    if (!fault.empty()) {
        abandon(fault, here.position);
        return {};
    }
    here.position += section.extent.length;
    return section;
}

/// Why a section cannot be one of this message.
std::string Reader::faultOf(Numbered const & section)
{
    auto const [number, extent] = section;
    if (extent.length < 5 || number == 0 || number >= 8)
        return format("section number %u of %llu octets", number,
                      static_cast<unsigned long long>(extent.length));
    std::uint64_t const end = extent.position + extent.length;
    return end > here.message_end || !input.reaches(end) ? format("section %u is cut short", number) : "";
}

/// Takes what a section says. True when it completes a field. A section that comes again replaces what it
/// said before, and a reason to refuse the field with it.
bool Reader::takeSection2(Section section, unsigned number, Extent const & extent)
{
    Field & f = here.state;
    switch (number) {
    case 1:
        here.refusals.product = readIDS(section, f.product);
        break;
    case 3:
        here.refusals.grid = readGDS(section, f.geometry);
        break;
    case 4:
        here.refusals.product = readPDS(section, f.product);
        break;
    case 5:
        here.refusals.data = readDRS(section, f.packing);
        break;
    case 6:
        here.refusals.bitmap = takeBitmap2(section.u8(6), extent);
        break;
    case 7:
        f.data = {extent.position + 5, extent.length - 5};
        return true;
    default:
        break;
    }
    return false;
}

/// What section 6 says, by its indicator: 0 for a bitmap of its own, 254 for the one before, 255 for none.
std::string Reader::takeBitmap2(unsigned indicator, Extent const & extent)
{
    Field & f = here.state;
    f.has_bitmap = indicator != 255;
    if (indicator == 0) {
        here.known_bitmap = Extent{extent.position + BITMAP_HEAD,
                                   extent.length - std::min<std::uint64_t>(BITMAP_HEAD, extent.length)};
        input.keep(here.known_bitmap->position);
    }
    f.bitmap = f.has_bitmap && here.known_bitmap ? *here.known_bitmap : Extent{};
    if (f.has_bitmap && indicator != 0 && indicator != 254)
        return format("bitmap %u of the centre's own", indicator);
    return f.has_bitmap && !here.known_bitmap ? "refers to an earlier bitmap, but there is none" : "";
}

} // namespace Yul::detail::grib
