// The fields of a file, one after the other.
#pragma once

#include "grid/grib/Edition1.h"
#include "grid/grib/Field.h"
#include "grid/grib/FieldValues.h"
#include "grid/grib/Input.h"

#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace Yul::detail::grib {

/// Finds the messages of a file and describes their fields from the headers alone; the octets of bitmaps and
/// data are read when a field is unpacked. Damaged messages are named and passed over; a field that cannot be
/// delivered comes with the reason in `Field::refusal`.
class Reader
{
public:
    /// "-" is standard input. 1, or 0 when the file cannot be opened.
    int open(char const * name);
    int close();
    /// Looks for the next message at or behind an octet; 0 on a pipe.
    int rewind(std::uint64_t position = 0);

    /// Messages are looked for behind these octets only, in order, until the file is closed; behind every octet while there
    /// are none.
    void setStarts(std::vector<std::uint64_t> octets) { starts = std::move(octets); }

    [[nodiscard]] bool isOpen() const noexcept { return input.isOpen(); }

    [[nodiscard]] std::string const & name() const noexcept { return input.name(); }

    /// The next field; false at the end of the file and where no message is found within 1000 octets.
    [[nodiscard]] bool next(Field & field);

    /// Unpacks the values of the field that `next` gave last, into the grid's own order, missing ones -9999.
    /// values  field.points of them.
    /// return  empty, else what is wrong; the values are undefined then.
    [[nodiscard]] std::string unpack(Field const & field, std::span<float> values);

    /// What there is to be said since the last call, whole lines.
    [[nodiscard]] std::vector<std::string> takeWarnings();

private:
    /// Octets of a grid, product or data definition that are looked at, and of "7777".
    static constexpr std::uint64_t LARGEST_HEAD = 1 << 16;
    static constexpr std::uint64_t END_MARK = 4;

    /// Why a field cannot be delivered, by the section that says so; a section that comes again clears its
    /// own reason.
    struct Refusals
    {
        std::string product;
        std::string grid;
        std::string data;
        std::string bitmap;
    };

    /// Where the reader is in the file.
    struct Place
    {
        std::uint64_t position = 0;
        std::uint64_t message = 0;
        std::uint64_t message_end = 0;
        bool is_inside = false;
        bool is_told = false; ///< the position was asked for
        Field state;          ///< what the sections of this message have said so far
        Refusals refusals;
        std::optional<Extent> known_bitmap;
    };

    /// A section of edition 2.
    struct Numbered
    {
        unsigned number = 0;
        Extent extent;
    };

    [[nodiscard]] bool search();
    [[nodiscard]] bool searchHere();
    void searchOn(std::uint64_t from);
    void enter();
    void complete(Field & field);

    [[nodiscard]] bool nextOfEdition2(Field & field);
    [[nodiscard]] std::optional<Numbered> passSection2();
    [[nodiscard]] std::string faultOf(Numbered const & section);
    [[nodiscard]] bool takeSection2(Section section, unsigned number, Extent const & extent);
    [[nodiscard]] std::string takeBitmap2(unsigned indicator, Extent const & extent);

    [[nodiscard]] bool nextOfEdition1(Field & field);
    [[nodiscard]] char const * takeSections1(std::uint64_t & position);
    [[nodiscard]] bool takeProduct1(std::uint64_t & position, Presence & presence);
    [[nodiscard]] bool takeGrid1(std::uint64_t & position, Presence const & presence);
    [[nodiscard]] bool takeBitmap1(std::uint64_t & position);
    [[nodiscard]] bool takeData1(std::uint64_t & position, int decimal);
    [[nodiscard]] bool takeSection1(
        std::uint64_t & position, std::size_t head, Section & section, Extent & extent, bool is_data = false);
    void correctLarge(Extent & extent);

    void quit(std::uint64_t next_position);
    void leave(std::uint64_t next_position);
    void abandon(std::string const & fault, std::uint64_t next_position);
    void warn(std::string line);

    Input input;
    Place here;
    std::vector<std::uint64_t> starts;
    bool has_found_any = false;
    std::vector<std::string> warnings;
    FieldValues field_values;
};

} // namespace Yul::detail::grib
