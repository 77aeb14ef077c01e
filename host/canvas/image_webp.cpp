#include <webp/decode.h>
#include <webp/demux.h>

#include <memory>
#include <new>

#include "canvas/image_codecs.h"

namespace {

struct EndDemuxer {
    void operator()(WebPDemuxer* file) const { WebPDemuxDelete(file); }
};
struct EndFrame {
    void operator()(WebPIterator* frame) const { WebPDemuxReleaseIterator(frame); }
};

}  // namespace

// The first picture of an animation, at its place.
AImage decodeWebp(std::span<const unsigned char> bytes) {
    const WebPData data{bytes.data(), bytes.size()};
    const std::unique_ptr<WebPDemuxer, EndDemuxer> file(WebPDemux(&data));
    WebPIterator found{};
    if (!file || !WebPDemuxGetFrame(file.get(), 1, &found)) return {};
    const std::unique_ptr<WebPIterator, EndFrame> frame(&found);
    const std::uint32_t width = WebPDemuxGetI(file.get(), WEBP_FF_CANVAS_WIDTH);
    const std::uint32_t height = WebPDemuxGetI(file.get(), WEBP_FF_CANVAS_HEIGHT);
    // A picture of one colour takes no bytes for its pixels, but nobody draws large ones.
    constexpr std::uint64_t kPixelsPerByte = 8192;
    if (!isPlausible(width, height, kPlainPixels + std::uint64_t{bytes.size()} * kPixelsPerByte)) return {};

    WebPDecoderConfig config;
    if (!WebPInitDecoderConfig(&config) ||
        WebPGetFeatures(frame->fragment.bytes, frame->fragment.size, &config.input) != VP8_STATUS_OK) {
        return {};
    }
    const std::int64_t right = std::int64_t{frame->x_offset} + config.input.width;
    const std::int64_t bottom = std::int64_t{frame->y_offset} + config.input.height;
    if (frame->x_offset < 0 || frame->y_offset < 0 || right > width || bottom > height) return {};
    AImage image(static_cast<int>(width), static_cast<int>(height));
    const std::size_t rowBytes = std::size_t{width} * sizeof(std::uint32_t);
    auto* const first = reinterpret_cast<std::uint8_t*>(image.row(frame->y_offset) + frame->x_offset);
    config.output.colorspace = MODE_bgrA;  // multiplied by alpha
    config.output.is_external_memory = 1;
    config.output.u.RGBA = {first, static_cast<int>(rowBytes),
                            rowBytes * static_cast<std::size_t>(config.input.height) -
                                std::size_t(frame->x_offset) * sizeof(std::uint32_t)};
    const VP8StatusCode status = WebPDecode(frame->fragment.bytes, frame->fragment.size, &config);
    WebPFreeDecBuffer(&config.output);
    if (status == VP8_STATUS_OUT_OF_MEMORY) throw std::bad_alloc();
    if (status != VP8_STATUS_OK) return {};
    return image;
}
