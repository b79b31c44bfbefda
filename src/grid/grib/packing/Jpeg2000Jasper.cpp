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

#if defined(JAS_VERSION_MAJOR) && JAS_VERSION_MAJOR >= 3

/// JasPer for this thread; it prints nothing.
class Session
{
public:
    Session() : is_ready(hasLibrary() && jas_init_thread() == 0) {}

    ~Session()
    {
        if (is_ready)
            jas_cleanup_thread();
    }

    Session(Session const &) = delete;
    Session & operator=(Session const &) = delete;

    bool const is_ready;

private:
    /// Once for the process.
    static bool hasLibrary()
    {
        static bool const IS_SET_UP = [] {
            jas_conf_clear();
            jas_conf_set_max_mem_usage(jas_get_total_mem_size());
            jas_conf_set_vlogmsgf(jas_vlogmsgf_discard);
            return jas_init_library() == 0;
        }();
        return IS_SET_UP;
    }
};

bool isReady()
{
    thread_local Session const session;
    return session.is_ready;
}

#else

/// JasPer is set up once for the process; false when that failed.
bool isReady()
{
    static bool const READY = jas_init() == 0;
    return READY;
}

#endif

struct Free
{
    void operator()(jas_stream_t * stream) const { jas_stream_close(stream); }

    void operator()(jas_image_t * image) const { jas_image_destroy(image); }

    void operator()(jas_matrix_t * matrix) const { jas_matrix_destroy(matrix); }
};

template <class Handle> using Owned = std::unique_ptr<Handle, Free>;

/// Samples a row at a time, because JasPer hands them out as words of eight octets. False when it does not.
bool scaleRows(jas_image_t & image, std::size_t width, std::size_t height, Scale const & scale, float * out)
{
    Owned<jas_matrix_t> const samples(jas_matrix_create(1, static_cast<jas_matind_t>(width)));
    if (samples == nullptr)
        return false;
    std::array<std::uint32_t, BLOCK> block;
    for (std::size_t row = 0; row < height; ++row) {
        if (jas_image_readcmpt(&image, 0, 0, static_cast<jas_image_coord_t>(row),
                               static_cast<jas_image_coord_t>(width), 1, samples.get()) != 0)
            return false;
        for (std::size_t first = 0; first < width; first += BLOCK) {
            std::size_t const count = std::min(BLOCK, width - first);
            for (std::size_t i = 0; i < count; ++i)
                block[i] = static_cast<std::uint32_t>(
                    jas_matrix_get(samples.get(), 0, static_cast<jas_matind_t>(first + i)));
            scaleIntegers(std::span(block).first(count), scale, out + row * width + first);
        }
    }
    return true;
}

} // namespace

std::string decodeJpeg2000(Octets octets, Scale const & scale, std::span<float> out)
{
    if (!isReady())
        return "no JPEG 2000 decoder";
    // The stream only reads; JasPer's interface does not say so.
    Owned<jas_stream_t> const stream(
        jas_stream_memopen(reinterpret_cast<char *>(const_cast<Octet *>(octets.data())), octets.size()));
    // Samples and tiles have been checked; with a limit JasPer would take a small picture's one tile for too many.
    Owned<jas_image_t> const image(
        stream != nullptr ? jas_image_decode(stream.get(), jas_image_strtofmt("jpc"), "max_samples=0")
                          : nullptr);
    if (image == nullptr)
        return "damaged JPEG 2000 picture";
    auto const width = static_cast<std::size_t>(jas_image_width(image.get()));
    auto const height = static_cast<std::size_t>(jas_image_height(image.get()));
    if (jas_image_numcmpts(image.get()) != 1 || width * height != out.size())
        return format("JPEG 2000 picture of %zu by %zu samples for %zu values", width, height, out.size());
    if (!scaleRows(*image, width, height, scale, out.data()))
        return "damaged JPEG 2000 picture";
    return {};
}

} // namespace Yul::detail::grib

#endif
