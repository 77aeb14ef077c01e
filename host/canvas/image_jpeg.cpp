// libjpeg reports errors by jumping out of its functions: the function that calls setjmp here holds nothing that
// would need a destructor when it happens.
#include <csetjmp>
#include <cstddef>
#include <cstdio>

// Behind <cstdio>, which it needs.
#include <jpeglib.h>

#include "canvas/image_codecs.h"

namespace {

class JpegReader {
public:
    explicit JpegReader(std::span<const unsigned char> bytes) : m_bytes(bytes) {
        m_jpeg.err = jpeg_std_error(&m_errors);
        m_errors.error_exit = fail;
        m_errors.emit_message = [](j_common_ptr, int) {};
        m_errors.output_message = [](j_common_ptr) {};
        m_jpeg.client_data = this;
        m_progress.progress_monitor = watch;
        m_source.init_source = [](j_decompress_ptr) {};
        m_source.term_source = [](j_decompress_ptr) {};
        m_source.resync_to_restart = jpeg_resync_to_restart;
        m_source.fill_input_buffer = [](j_decompress_ptr jpeg) -> boolean {
            fail(reinterpret_cast<j_common_ptr>(jpeg));
        };
        m_source.skip_input_data = skip;
    }
    ~JpegReader() { jpeg_destroy_decompress(&m_jpeg); }
    JpegReader(const JpegReader&) = delete;
    JpegReader& operator=(const JpegReader&) = delete;

    // `row` is for rows that need another step.
    bool read(AImage& image, std::vector<unsigned char>& row) {
        if (setjmp(m_jump)) return false;
        jpeg_create_decompress(&m_jpeg);
        m_jpeg.progress = &m_progress;
        m_source.next_input_byte = m_bytes.data();
        m_source.bytes_in_buffer = m_bytes.size();
        m_jpeg.src = &m_source;
        jpeg_read_header(&m_jpeg, TRUE);
        // Every block of a fully sampled component takes a bit at least, except with arithmetic coding, which
        // nobody uses.
        if (m_jpeg.arith_code) return false;
        if (!isPlausible(m_jpeg.image_width, m_jpeg.image_height,
                         std::uint64_t{m_bytes.size()} * 8 * 64 * 16))
            return false;
        const bool inks = m_jpeg.jpeg_color_space == JCS_CMYK || m_jpeg.jpeg_color_space == JCS_YCCK;
        m_jpeg.out_color_space = inks ? JCS_CMYK : JCS_EXT_BGRA;
        jpeg_start_decompress(&m_jpeg);
        image = AImage(static_cast<int>(m_jpeg.output_width), static_cast<int>(m_jpeg.output_height));
        if (inks) row.resize(std::size_t{m_jpeg.output_width} * 4);
        for (int y = 0; y < image.height(); ++y) {
            JSAMPROW to = inks ? row.data() : reinterpret_cast<JSAMPROW>(image.row(y));
            jpeg_read_scanlines(&m_jpeg, &to, 1);
            if (inks) toRgb(row.data(), image.width(), image.row(y));
        }
        return true;
    }

private:
    // The files of the programs that write such images hold the inks inverted, and say so by a marker.
    void toRgb(const unsigned char* inks, int width, std::uint32_t* to) const {
        const std::uint32_t flip = m_jpeg.saw_Adobe_marker ? 0 : 255;
        for (int x = 0; x < width; ++x, inks += 4) {
            const std::uint32_t key = inks[3] ^ flip;
            to[x] = 0xff000000 | divideBy255((inks[0] ^ flip) * key) << 16 |
                    divideBy255((inks[1] ^ flip) * key) << 8 | divideBy255((inks[2] ^ flip) * key);
        }
    }

    static JpegReader& self(j_common_ptr jpeg) { return *static_cast<JpegReader*>(jpeg->client_data); }
    [[noreturn]] static void fail(j_common_ptr jpeg) { std::longjmp(self(jpeg).m_jump, 1); }
    static void skip(j_decompress_ptr jpeg, long count) {
        if (count <= 0) return;
        jpeg_source_mgr& source = *jpeg->src;
        if (static_cast<std::size_t>(count) > source.bytes_in_buffer)
            fail(reinterpret_cast<j_common_ptr>(jpeg));
        source.next_input_byte += count;
        source.bytes_in_buffer -= static_cast<std::size_t>(count);
    }
    // A progressive file may ask for as many passes over the whole image as it likes.
    static void watch(j_common_ptr jpeg) {
        constexpr int kMostScans = 100;
        if (reinterpret_cast<j_decompress_ptr>(jpeg)->input_scan_number > kMostScans) fail(jpeg);
    }

    std::span<const unsigned char> m_bytes;
    jpeg_decompress_struct m_jpeg{};
    jpeg_error_mgr m_errors{};
    jpeg_progress_mgr m_progress{};
    jpeg_source_mgr m_source{};
    std::jmp_buf m_jump{};
};

}  // namespace

AImage decodeJpeg(std::span<const unsigned char> bytes) {
    JpegReader reader(bytes);
    AImage image;
    std::vector<unsigned char> row;
    if (!reader.read(image, row)) return {};
    return image;
}
