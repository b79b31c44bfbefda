#include "grid/grib/packing/Png.h"

#include "core/Format.h"
#include "grid/grib/packing/Unpack.h"

#include <algorithm>
#include <csetjmp>
#include <cstring>
#include <vector>

#ifdef YUL_HAVE_PNG
#include <png.h>
#endif

namespace Yul::detail::grib {

#ifdef YUL_HAVE_PNG
namespace {

constexpr std::size_t SIGNATURE = 8;

/// Octets that libpng has not taken yet.
struct Source
{
    Octets left;
};

void giveOctets(png_structp png, png_bytep to, png_size_t count)
{
    auto * const source = static_cast<Source *>(png_get_io_ptr(png));
    if (count > source->left.size())
        png_error(png, "cut short");
    std::memcpy(to, source->left.data(), count);
    source->left = source->left.subspan(count);
}

void ignoreWarning(png_structp, png_const_charp) {}

/// Leaves libpng by its own way out; nothing is printed.
void leave(png_structp png, png_const_charp)
{
    png_longjmp(png, 1);
}

/// libpng's two records, freed together.
class Decoder
{
public:
    Decoder() : png(png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, leave, ignoreWarning))
    {
        if (png != nullptr)
            info = png_create_info_struct(png);
    }

    ~Decoder() { png_destroy_read_struct(&png, &info, nullptr); }

    Decoder(Decoder const &) = delete;
    Decoder & operator=(Decoder const &) = delete;

    png_structp png = nullptr;
    png_infop info = nullptr;
};

// libpng leaves the next three operations by a long jump when something is wrong: nothing with a destructor
// may live in them.

bool readHeader(Decoder & decoder, Source & source)
{
    if (setjmp(png_jmpbuf(decoder.png)) != 0)
        return false;
    png_set_read_fn(decoder.png, &source, giveOctets);
    // Texts, profiles and the like are passed over: a few octets of them unpack to megabytes.
    png_set_keep_unknown_chunks(decoder.png, PNG_HANDLE_CHUNK_NEVER, nullptr, -1);
    // Values behind a bitmap are one row, of which libpng would take a million. The size is compared with the grid's below.
    png_set_user_limits(decoder.png, PNG_UINT_31_MAX, PNG_UINT_31_MAX);
    png_read_info(decoder.png, decoder.info);
    return true;
}

bool readRow(Decoder & decoder, Octet * row)
{
    if (setjmp(png_jmpbuf(decoder.png)) != 0)
        return false;
    png_read_row(decoder.png, row, nullptr);
    return true;
}

} // namespace

std::string unpackPng(Octets data, Packing const & packing, std::span<float> out)
{
    if (packing.bits == 0 || out.empty()) {
        std::fill(out.begin(), out.end(), static_cast<float>(packing.scale(0)));
        return {};
    }
    if (data.size() < SIGNATURE || png_sig_cmp(data.data(), 0, SIGNATURE) != 0)
        return NOT_A_PNG;
    Source source{data};
    Decoder decoder;
    if (decoder.info == nullptr || !readHeader(decoder, source))
        return "damaged PNG picture";
    std::uint64_t const width = png_get_image_width(decoder.png, decoder.info);
    std::uint64_t const height = png_get_image_height(decoder.png, decoder.info);
    unsigned const bits = static_cast<unsigned>(png_get_bit_depth(decoder.png, decoder.info)) *
                          png_get_channels(decoder.png, decoder.info);
    if (width * height != out.size() || bits > 32 ||
        png_get_interlace_type(decoder.png, decoder.info) != PNG_INTERLACE_NONE)
        return format("PNG picture of %llu by %llu samples of %u bits for %zu values",
                      static_cast<unsigned long long>(width), static_cast<unsigned long long>(height), bits,
                      out.size());
    std::vector<Octet> row(png_get_rowbytes(decoder.png, decoder.info));
    for (std::size_t y = 0; y < height; ++y) {
        if (!readRow(decoder, row.data()))
            return "damaged PNG picture";
        unpackScaled(row, 0, bits, packing.scale, out.subspan(y * static_cast<std::size_t>(width), width));
    }
    return {};
}

#else

std::string unpackPng(Octets, Packing const &, std::span<float>)
{
    return "PNG pictures are not read: built without libpng";
}

#endif

} // namespace Yul::detail::grib
