// libpng reports errors by jumping out of its functions: the functions that call setjmp here hold nothing that
// would need a destructor when it happens.
#include <png.h>
#include <zlib.h>

#include <algorithm>
#include <csetjmp>
#include <cstddef>
#include <cstring>
#include <new>

#include "canvas/image_codecs.h"

namespace {

std::uint32_t alphaOf(std::uint32_t pixel) {
    return pixel >> 24;
}

void multiplyByAlpha(std::uint32_t& pixel) {
    const std::uint32_t alpha = alphaOf(pixel);
    if (alpha == 255) return;
    pixel = alpha << 24 | divideBy255((pixel >> 16 & 0xff) * alpha) << 16 |
            divideBy255((pixel >> 8 & 0xff) * alpha) << 8 | divideBy255((pixel & 0xff) * alpha);
}

// Quick, and small for calm drawings, whose rows are much like those above them; busy ones would be smaller
// without a filter.
constexpr int kFilter = PNG_FILTER_UP;
constexpr int kLevel = 2;
constexpr int kStrategy = Z_DEFAULT_STRATEGY;

class PngWriter {
public:
    explicit PngWriter(std::string& bytes)
        : m_png(png_create_write_struct(PNG_LIBPNG_VER_STRING, this, fail, ignore)),
          m_info(m_png ? png_create_info_struct(m_png) : nullptr),
          m_bytes(bytes) {
        if (!m_info) {
            png_destroy_write_struct(&m_png, nullptr);
            throw std::bad_alloc();
        }
        png_set_write_fn(m_png, this, append, nullptr);
    }
    ~PngWriter() { png_destroy_write_struct(&m_png, &m_info); }
    PngWriter(const PngWriter&) = delete;
    PngWriter& operator=(const PngWriter&) = delete;

    // `row` has room for a row as it is written.
    bool write(const AImage& image, bool opaque, unsigned char* row) {
        if (setjmp(png_jmpbuf(m_png))) return false;
        png_set_user_limits(m_png, PNG_UINT_31_MAX, PNG_UINT_31_MAX);
        png_set_IHDR(m_png, m_info, static_cast<png_uint_32>(image.width()),
                     static_cast<png_uint_32>(image.height()), 8,
                     opaque ? PNG_COLOR_TYPE_RGB : PNG_COLOR_TYPE_RGB_ALPHA, PNG_INTERLACE_NONE,
                     PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
        png_set_filter(m_png, PNG_FILTER_TYPE_BASE, kFilter);
        png_set_compression_level(m_png, kLevel);
        png_set_compression_strategy(m_png, kStrategy);
        png_set_compression_buffer_size(m_png, 1 << 16);
        png_write_info(m_png, m_info);
        for (int y = 0; y < image.height(); ++y) {
            opaque ? toRgb(image.row(y), image.width(), row) : toRgba(image.row(y), image.width(), row);
            png_write_row(m_png, row);
        }
        png_write_end(m_png, nullptr);
        return true;
    }

private:
    static void toRgb(const std::uint32_t* pixels, int width, unsigned char* to) {
        for (int x = 0; x < width; ++x, to += 3) {
            to[0] = static_cast<unsigned char>(pixels[x] >> 16);
            to[1] = static_cast<unsigned char>(pixels[x] >> 8);
            to[2] = static_cast<unsigned char>(pixels[x]);
        }
    }
    static void toRgba(const std::uint32_t* pixels, int width, unsigned char* to) {
        for (int x = 0; x < width; ++x, to += 4) {
            const std::uint32_t alpha = alphaOf(pixels[x]);
            const auto channel = [&](int shift) {
                const std::uint32_t value = pixels[x] >> shift & 0xff;
                if (alpha == 255) return static_cast<unsigned char>(value);
                if (alpha == 0) return static_cast<unsigned char>(0);
                return static_cast<unsigned char>(std::min((value * 255 + alpha / 2) / alpha, 255u));
            };
            to[0] = channel(16);
            to[1] = channel(8);
            to[2] = channel(0);
            to[3] = static_cast<unsigned char>(alpha);
        }
    }

    [[noreturn]] static void fail(png_structp png, png_const_charp) { png_longjmp(png, 1); }
    static void ignore(png_structp, png_const_charp) {}
    static void append(png_structp png, png_bytep data, std::size_t size) {
        auto& self = *static_cast<PngWriter*>(png_get_io_ptr(png));
        bool appended = true;
        try {
            self.m_bytes.append(reinterpret_cast<const char*>(data), size);
        } catch (const std::exception&) {
            appended = false;
        }
        if (!appended) fail(png, "");
    }

    png_structp m_png;
    png_infop m_info;
    std::string& m_bytes;
};

class PngReader {
public:
    explicit PngReader(std::span<const unsigned char> bytes)
        : m_png(png_create_read_struct(PNG_LIBPNG_VER_STRING, this, fail, ignore)),
          m_info(m_png ? png_create_info_struct(m_png) : nullptr),
          m_bytes(bytes),
          m_size(bytes.size()) {
        if (!m_info) {
            png_destroy_read_struct(&m_png, nullptr, nullptr);
            throw std::bad_alloc();
        }
        png_set_read_fn(m_png, this, take);
    }
    ~PngReader() { png_destroy_read_struct(&m_png, &m_info, nullptr); }
    PngReader(const PngReader&) = delete;
    PngReader& operator=(const PngReader&) = delete;

    bool read(AImage& image) {
        if (setjmp(png_jmpbuf(m_png))) return false;
        png_set_user_limits(m_png, PNG_UINT_31_MAX, PNG_UINT_31_MAX);
        png_read_info(m_png, m_info);
        const png_uint_32 width = png_get_image_width(m_png, m_info);
        const png_uint_32 height = png_get_image_height(m_png, m_info);
        const unsigned bits = png_get_bit_depth(m_png, m_info) * png_get_channels(m_png, m_info);
        // Deflate makes at most 1032 bytes out of one.
        if (!isPlausible(width, height, std::uint64_t{m_size} * 1032 * 8 / std::max(bits, 1u))) return false;
        png_set_expand(m_png);
        png_set_scale_16(m_png);
        png_set_gray_to_rgb(m_png);
        png_set_add_alpha(m_png, 0xff, PNG_FILLER_AFTER);
        png_set_bgr(m_png);
        const int passes = png_set_interlace_handling(m_png);
        png_read_update_info(m_png, m_info);
        if (png_get_rowbytes(m_png, m_info) != std::size_t{width} * 4) return false;
        image = AImage(static_cast<int>(width), static_cast<int>(height));
        for (int pass = 0; pass < passes; ++pass) {
            for (int y = 0; y < image.height(); ++y)
                png_read_row(m_png, reinterpret_cast<png_bytep>(image.row(y)), nullptr);
        }
        return true;
    }

private:
    [[noreturn]] static void fail(png_structp png, png_const_charp) { png_longjmp(png, 1); }
    static void ignore(png_structp, png_const_charp) {}
    static void take(png_structp png, png_bytep to, std::size_t size) {
        auto& self = *static_cast<PngReader*>(png_get_io_ptr(png));
        if (size > self.m_bytes.size()) fail(png, "");
        std::memcpy(to, self.m_bytes.data(), size);
        self.m_bytes = self.m_bytes.subspan(size);
    }

    png_structp m_png;
    png_infop m_info;
    std::span<const unsigned char> m_bytes;
    std::size_t m_size;
};

}  // namespace

AImage decodePng(std::span<const unsigned char> bytes) {
    PngReader reader(bytes);
    AImage image;
    if (!reader.read(image)) return {};
    std::for_each(image.pixels().begin(), image.pixels().end(), multiplyByAlpha);
    return image;
}

std::string encodePng(const AImage& image) {
    std::string bytes;
    if (image.empty()) return bytes;
    const bool opaque = std::all_of(image.pixels().begin(), image.pixels().end(),
                                    [](std::uint32_t pixel) { return alphaOf(pixel) == 255; });
    std::vector<unsigned char> row(static_cast<std::size_t>(image.width()) * (opaque ? 3 : 4));
    bool written = false;
    {
        PngWriter writer(bytes);
        written = writer.write(image, opaque, row.data());
    }
    if (!written) throw std::bad_alloc();
    return bytes;
}
