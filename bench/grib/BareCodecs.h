// The codecs alone: the code stream of a message in memory, whose samples are thrown away.
#pragma once

#include "grib/Messages.h"

#include <openjpeg.h>
#include <png.h>

namespace bench::grib {

inline Octets codeStream(Octets const & message)
{
    std::size_t at = 16;
    for (;;) {
        std::size_t length = 0;
        for (std::size_t i = 0; i < 4; ++i)
            length = length << 8 | message[at + i];
        auto const begin = message.begin() + static_cast<std::ptrdiff_t>(at);
        if (message[at + 4] == 7)
            return {begin + 5, begin + static_cast<std::ptrdiff_t>(length)};
        at += length;
    }
}

struct Source
{
    unsigned char const * at;
    std::size_t left;
};

inline std::size_t take(Source & source, void * to, std::size_t count)
{
    count = std::min(count, source.left);
    std::memcpy(to, source.at, count);
    source.at += count;
    source.left -= count;
    return count;
}

inline void decodeJpeg2000(Octets const & stream)
{
    Source source{stream.data(), stream.size()};
    opj_stream_t * const input = opj_stream_default_create(OPJ_STREAM_READ);
    opj_stream_set_user_data(input, &source, nullptr);
    opj_stream_set_user_data_length(input, stream.size());
    opj_stream_set_read_function(input, [](void * to, OPJ_SIZE_T count, void * data) -> OPJ_SIZE_T {
        std::size_t const got = take(*static_cast<Source *>(data), to, count);
        return got > 0 ? got : static_cast<OPJ_SIZE_T>(-1);
    });
    opj_codec_t * const codec = opj_create_decompress(OPJ_CODEC_J2K);
    opj_dparameters_t parameters;
    opj_set_default_decoder_parameters(&parameters);
    opj_setup_decoder(codec, &parameters);
    opj_image_t * image = nullptr;
    if (opj_read_header(input, codec, &image) == OPJ_FALSE || opj_decode(codec, input, image) == OPJ_FALSE)
        fail("OpenJPEG reads nothing");
    opj_image_destroy(image);
    opj_destroy_codec(codec);
    opj_stream_destroy(input);
}

inline void decodePng(Octets const & stream)
{
    Source source{stream.data(), stream.size()};
    png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_set_read_fn(png, &source, [](png_structp from, png_bytep to, png_size_t count) {
        take(*static_cast<Source *>(png_get_io_ptr(from)), to, count);
    });
    png_read_info(png, info);
    static Octets row;
    row.resize(png_get_rowbytes(png, info));
    for (png_uint_32 y = png_get_image_height(png, info); y > 0; --y)
        png_read_row(png, row.data(), nullptr);
    png_destroy_read_struct(&png, &info, nullptr);
}

} // namespace bench::grib
