#include <gif_lib.h>

#include <cstring>

#include "canvas/image_codecs.h"

namespace {

// The first picture of a file; those behind it are never read.
class GifReader {
public:
    explicit GifReader(std::span<const unsigned char> bytes) : m_bytes(bytes) {
        int error = 0;
        m_gif = DGifOpen(this, take, &error);
        if (!m_gif && error == D_GIF_ERR_NOT_ENOUGH_MEM) throw std::bad_alloc();
    }
    ~GifReader() {
        if (m_gif) DGifCloseFile(m_gif, nullptr);
    }
    GifReader(const GifReader&) = delete;
    GifReader& operator=(const GifReader&) = delete;

    AImage read() {
        if (!m_gif || !findPicture() || DGifGetImageDesc(m_gif) != GIF_OK) return {};
        const GifImageDesc& frame = m_gif->Image;
        const ColorMapObject* const colors = frame.ColorMap ? frame.ColorMap : m_gif->SColorMap;
        const bool isInside = frame.Left >= 0 && frame.Top >= 0 && frame.Width > 0 && frame.Height > 0;
        if (!colors || !isInside) return {};
        // A picture may be larger than the file says that the whole is.
        const int width = std::max(m_gif->SWidth, frame.Left + frame.Width);
        const int height = std::max(m_gif->SHeight, frame.Top + frame.Height);
        if (!isPlausible(static_cast<std::uint64_t>(width), static_cast<std::uint64_t>(height),
                         kPlainPixels + std::uint64_t{m_bytes.size()} * kLongestString)) {
            return {};
        }
        AImage image(width, height);
        std::vector<GifPixelType> row(static_cast<std::size_t>(frame.Width));
        constexpr Pass kPasses[] = {{0, 8}, {4, 8}, {2, 4}, {1, 2}};
        constexpr Pass kOnePass[] = {{0, 1}};
        const std::span<const Pass> passes =
            frame.Interlace ? std::span<const Pass>(kPasses) : std::span<const Pass>(kOnePass);
        for (const auto& [first, distance] : passes) {
            for (int y = first; y < frame.Height; y += distance) {
                if (DGifGetLine(m_gif, row.data(), frame.Width) != GIF_OK) return {};
                paint(row, *colors, image.row(frame.Top + y) + frame.Left);
            }
        }
        return image;
    }

private:
    // Which rows come one after the other.
    struct Pass {
        int first, distance;
    };
    // A code of a byte and a half stands for so many pixels at most.
    static constexpr std::uint64_t kLongestString = 4096;

    static int take(GifFileType* gif, GifByteType* to, int count) {
        auto& self = *static_cast<GifReader*>(gif->UserData);
        const std::size_t size =
            std::min(static_cast<std::size_t>(std::max(count, 0)), self.m_bytes.size() - self.m_at);
        std::memcpy(to, self.m_bytes.data() + self.m_at, size);
        self.m_at += size;
        return static_cast<int>(size);
    }

    // Skips to the first picture; what stands before it may tell a transparent colour.
    bool findPicture() {
        for (GifRecordType type{};
             DGifGetRecordType(m_gif, &type) == GIF_OK && type != TERMINATE_RECORD_TYPE;) {
            if (type == IMAGE_DESC_RECORD_TYPE) return true;
            if (type != EXTENSION_RECORD_TYPE) return false;
            int kind = 0;
            GifByteType* block = nullptr;  // its size, then its bytes
            if (DGifGetExtension(m_gif, &kind, &block) != GIF_OK) return false;
            GraphicsControlBlock control;
            if (kind == GRAPHICS_EXT_FUNC_CODE && block &&
                DGifExtensionToGCB(block[0], block + 1, &control) == GIF_OK)
                m_transparent = control.TransparentColor;
            while (block) {
                if (DGifGetExtensionNext(m_gif, &block) != GIF_OK) return false;
            }
        }
        return false;
    }

    void paint(const std::vector<GifPixelType>& row, const ColorMapObject& colors, std::uint32_t* to) const {
        for (const GifPixelType index : row) {
            const bool shows = index != m_transparent && index < colors.ColorCount;
            const GifColorType color = shows ? colors.Colors[index] : GifColorType{};
            *to++ = shows ? 0xff000000 | std::uint32_t{color.Red} << 16 | std::uint32_t{color.Green} << 8 |
                                color.Blue
                          : 0;
        }
    }

    std::span<const unsigned char> m_bytes;
    std::size_t m_at = 0;
    GifFileType* m_gif = nullptr;
    int m_transparent = NO_TRANSPARENT_COLOR;
};

}  // namespace

AImage decodeGif(std::span<const unsigned char> bytes) {
    return GifReader(bytes).read();
}
