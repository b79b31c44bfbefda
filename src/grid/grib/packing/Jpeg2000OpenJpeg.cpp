// JPEG 2000 by OpenJPEG.
#ifdef YUL_HAVE_OPENJPEG

#include "core/Format.h"
#include "grid/grib/packing/Jpeg2000.h"
#include "grid/grib/packing/Unpack.h"

#include <algorithm>
#include <cstring>
#include <memory>

#include <openjpeg.h>

namespace Yul::detail::grib {
namespace {

/// A code stream in memory and how far it has been read.
struct Source
{
    Octets octets;
    std::size_t at = 0;
};

constexpr auto END = static_cast<OPJ_SIZE_T>(-1);

OPJ_SIZE_T giveOctets(void * to, OPJ_SIZE_T count, void * data)
{
    auto & source = *static_cast<Source *>(data);
    std::size_t const given = std::min<std::size_t>(count, source.octets.size() - source.at);
    if (given == 0)
        return END;
    std::memcpy(to, source.octets.data() + source.at, given);
    source.at += given;
    return given;
}

OPJ_OFF_T skipOctets(OPJ_OFF_T count, void * data)
{
    auto & source = *static_cast<Source *>(data);
    if (count < 0)
        return -1;
    auto const skipped =
        std::min<std::size_t>(static_cast<std::size_t>(count), source.octets.size() - source.at);
    source.at += skipped;
    return skipped > 0 || count == 0 ? static_cast<OPJ_OFF_T>(skipped) : -1;
}

OPJ_BOOL seekOctet(OPJ_OFF_T position, void * data)
{
    auto & source = *static_cast<Source *>(data);
    if (position < 0 || static_cast<std::size_t>(position) > source.octets.size())
        return OPJ_FALSE;
    source.at = static_cast<std::size_t>(position);
    return OPJ_TRUE;
}

struct Free
{
    void operator()(opj_codec_t * codec) const { opj_destroy_codec(codec); }

    void operator()(opj_image_t * image) const { opj_image_destroy(image); }
};

using Codec = std::unique_ptr<opj_codec_t, Free>;
using Image = std::unique_ptr<opj_image_t, Free>;
using Stream = std::unique_ptr<opj_stream_t, decltype(&opj_stream_destroy)>;

Stream openStream(Source & source)
{
    Stream stream(opj_stream_default_create(OPJ_TRUE), &opj_stream_destroy);
    if (stream != nullptr) {
        opj_stream_set_user_data(stream.get(), &source, nullptr);
        opj_stream_set_user_data_length(stream.get(), source.octets.size());
        opj_stream_set_read_function(stream.get(), giveOctets);
        opj_stream_set_skip_function(stream.get(), skipOctets);
        opj_stream_set_seek_function(stream.get(), seekOctet);
    }
    return stream;
}

bool holdsSamples(opj_image_t const & image, std::size_t count)
{
    opj_image_comp_t const & samples = image.comps[0];
    return image.numcomps == 1 && std::uint64_t{samples.w} * samples.h == count;
}

} // namespace

std::string decodeJpeg2000(Octets octets, Scale const & scale, std::span<float> out)
{
    Source source{octets};
    Stream const stream = openStream(source);
    Codec const codec(opj_create_decompress(OPJ_CODEC_J2K));
    opj_dparameters_t parameters;
    opj_set_default_decoder_parameters(&parameters);
    if (stream == nullptr || codec == nullptr || opj_setup_decoder(codec.get(), &parameters) == OPJ_FALSE)
        return "no JPEG 2000 decoder";
    opj_image_t * header = nullptr;
    bool const has_header = opj_read_header(stream.get(), codec.get(), &header) == OPJ_TRUE;
    Image const image(header);
    if (!has_header || image == nullptr || image->numcomps == 0)
        return "damaged JPEG 2000 picture";
    if (!holdsSamples(*image, out.size()))
        return format("JPEG 2000 picture of %u by %u samples for %zu values", image->comps[0].w,
                      image->comps[0].h, out.size());
    if (opj_decode(codec.get(), stream.get(), image.get()) == OPJ_FALSE ||
        !holdsSamples(*image, out.size()) || image->comps[0].data == nullptr)
        return "damaged JPEG 2000 picture";
    auto const * const samples = reinterpret_cast<std::uint32_t const *>(image->comps[0].data);
    scaleIntegers({samples, out.size()}, scale, out.data());
    return {};
}

} // namespace Yul::detail::grib

#endif
