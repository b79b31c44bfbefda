// JPEG 2000 by JasPer.
#ifdef YUL_HAVE_JASPER

#include "core/Format.h"
#include "grid/grib/packing/Jpeg2000.h"
#include "grid/grib/packing/Unpack.h"

#include <algorithm>
#include <array>
#include <memory>

#include <jasper/jasper.h>

namespace Yul::detail::grib {
namespace {

constexpr std::size_t BLOCK = 1024;

/// JasPer is set up once for the process; false when that failed.
bool isReady()
{
    static bool const ready = jas_init() == 0;
    return ready;
}

struct Free
{
    void operator()(jas_stream_t * stream) const { jas_stream_close(stream); }

    void operator()(jas_image_t * image) const { jas_image_destroy(image); }

    void operator()(jas_matrix_t * matrix) const { jas_matrix_destroy(matrix); }
};

template <class Handle> using Owned = std::unique_ptr<Handle, Free>;

/// Samples row by row, scaled in blocks.
void scaleRows(
    jas_matrix_t & samples, std::size_t width, std::size_t height, Scale const & scale, float * out)
{
    std::array<std::uint32_t, BLOCK> block;
    for (std::size_t row = 0; row < height; ++row)
        for (std::size_t first = 0; first < width; first += BLOCK) {
            std::size_t const count = std::min(BLOCK, width - first);
            for (std::size_t i = 0; i < count; ++i)
                block[i] = static_cast<std::uint32_t>(jas_matrix_get(&samples, static_cast<jas_matind_t>(row),
                                                                     static_cast<jas_matind_t>(first + i)));
            scaleIntegers(std::span(block).first(count), scale, out + row * width + first);
        }
}

} // namespace

std::string decodeJpeg2000(Octets octets, Scale const & scale, std::span<float> out)
{
    if (!isReady())
        return "no JPEG 2000 decoder";
    // The stream only reads; JasPer's interface does not say so.
    Owned<jas_stream_t> const stream(
        jas_stream_memopen(reinterpret_cast<char *>(const_cast<Octet *>(octets.data())), octets.size()));
    std::string const options = format("max_samples=%zu", out.size());
    Owned<jas_image_t> const image(
        stream != nullptr ? jas_image_decode(stream.get(), jas_image_strtofmt("jpc"), options.c_str())
                          : nullptr);
    if (image == nullptr)
        return "damaged JPEG 2000 picture";
    auto const width = static_cast<std::size_t>(jas_image_width(image.get()));
    auto const height = static_cast<std::size_t>(jas_image_height(image.get()));
    if (jas_image_numcmpts(image.get()) != 1 || width * height != out.size())
        return format("JPEG 2000 picture of %zu by %zu samples for %zu values", width, height, out.size());
    Owned<jas_matrix_t> const samples(
        jas_matrix_create(static_cast<jas_matind_t>(height), static_cast<jas_matind_t>(width)));
    if (samples == nullptr || jas_image_readcmpt(image.get(), 0, 0, 0, static_cast<jas_image_coord_t>(width),
                                                 static_cast<jas_image_coord_t>(height), samples.get()) != 0)
        return "damaged JPEG 2000 picture";
    scaleRows(*samples, width, height, scale, out.data());
    return {};
}

} // namespace Yul::detail::grib

#endif
