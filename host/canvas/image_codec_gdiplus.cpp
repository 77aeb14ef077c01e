// PNG and JPEG by GDI+. It shows what it can of damaged files, and takes the memory for whatever size a file
// claims to have: so files are looked through before it sees them.
#include <algorithm>
#include <array>
#include <initializer_list>
#include <new>
#include <utility>

#include "canvas/gdiplus_startup.h"
#include "canvas/image.h"
#include "canvas/image_limits.h"
#include "canvas/pixel_mixing.h"

// <gdiplus.h> takes min and max from where it stands.
using std::max;
using std::min;

#include <objidl.h>

#include <gdiplus.h>

namespace {

using Bytes = std::span<const unsigned char>;

std::uint32_t bigEndian(Bytes bytes) {
    std::uint32_t value = 0;
    for (unsigned char byte : bytes) value = value << 8 | byte;
    return value;
}

bool startsWith(Bytes bytes, std::initializer_list<unsigned char> start) {
    return bytes.size() >= start.size() && std::equal(start.begin(), start.end(), bytes.begin());
}

// The checksum of PNG's chunks: CRC-32, its polynomial reversed.
std::uint32_t checksum(Bytes bytes) {
    static const std::array<std::uint32_t, 256> table = [] {
        std::array<std::uint32_t, 256> made{};
        for (std::uint32_t i = 0; i < made.size(); ++i) {
            std::uint32_t value = i;
            for (int bit = 0; bit < 8; ++bit) value = value >> 1 ^ (value & 1 ? 0xedb88320 : 0);
            made[i] = value;
        }
        return made;
    }();
    std::uint32_t sum = 0xffffffff;
    for (unsigned char byte : bytes) sum = table[(sum ^ byte) & 0xff] ^ sum >> 8;
    return ~sum;
}

// Signature, then chunks: length u32, type 4 bytes, data, checksum u32 of type and data; big-endian. The
// first is IHDR: width u32, height u32, bits of a channel u8, kind of colour u8, …; the last is IEND.
bool isWholePng(Bytes bytes) {
    constexpr std::size_t kSignature = 8;
    constexpr std::size_t kAround = 12;
    constexpr std::uint32_t kHeader = 0x49484452;  // "IHDR"
    constexpr std::uint32_t kEnd = 0x49454e44;     // "IEND"
    constexpr std::uint32_t kAncillary = 0x20000000;
    static constexpr std::array<unsigned, 7> kChannels{1, 0, 3, 1, 2, 0, 4};  // by kind of colour
    const std::uint64_t size = bytes.size();
    bool isFirst = true;
    for (bytes = bytes.subspan(kSignature); bytes.size() >= kAround; isFirst = false) {
        const std::uint32_t length = bigEndian(bytes.first(4));
        const std::uint32_t type = bigEndian(bytes.subspan(4, 4));
        if (length > bytes.size() - kAround || isFirst != (type == kHeader)) return false;
        const Bytes data = bytes.subspan(8, length);
        const bool isIntact =
            checksum(bytes.subspan(4, 4 + length)) == bigEndian(bytes.subspan(8 + length, 4));
        if (!isIntact && (type & kAncillary) == 0) return false;
        if (type == kHeader) {
            if (data.size() != 13 || data[9] >= kChannels.size()) return false;
            const unsigned bits = std::max(kChannels[data[9]] * data[8], 1u);
            // Deflate makes at most 1032 bytes out of one.
            if (!isPlausible(bigEndian(data.first(4)), bigEndian(data.subspan(4, 4)), size * 1032 * 8 / bits))
                return false;
        }
        if (type == kEnd) return true;
        bytes = bytes.subspan(kAround + length);
    }
    return false;
}

// Segments: 0xff, marker, length u16 with itself, data; big-endian. A frame's: bits of a sample u8, height
// u16, width u16, …; what a scan's is followed by ends with the end marker, as the whole file does.
bool isWholeJpeg(Bytes bytes) {
    constexpr unsigned char kScan = 0xda;
    const std::uint64_t size = bytes.size();
    bool hasFrame = false;
    bytes = bytes.subspan(2);
    while (bytes.size() >= 4 && bytes[0] == 0xff) {
        const unsigned char marker = bytes[1];
        if (marker == 0xff) {  // padding
            bytes = bytes.subspan(1);
            continue;
        }
        const std::size_t length = bigEndian(bytes.subspan(2, 2));
        if (length < 2 || length > bytes.size() - 2) return false;
        const Bytes data = bytes.subspan(4, length - 2);
        // C4, C8 and CC are no frames; from C9 on, frames have arithmetic coding, which nobody uses.
        if (marker >= 0xc0 && marker <= 0xcf && marker != 0xc4 && marker != 0xcc) {
            if (marker > 0xc7 || data.size() < 5) return false;
            // Every block of a fully sampled component takes a bit at least.
            if (!isPlausible(bigEndian(data.subspan(3, 2)), bigEndian(data.subspan(1, 2)),
                             size * 8 * 64 * 16)) {
                return false;
            }
            hasFrame = true;
        }
        bytes = bytes.subspan(2 + length);
        if (marker == kScan) {
            static constexpr std::array<unsigned char, 2> kEnd{0xff, 0xd9};
            return hasFrame &&
                   std::search(bytes.begin(), bytes.end(), kEnd.begin(), kEnd.end()) != bytes.end();
        }
    }
    return false;
}

// A stream in memory.
class Stream {
public:
    explicit Stream(Bytes bytes = {}) {
        // The stream takes the memory over, once there is one.
        HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, std::max<std::size_t>(bytes.size(), 1));
        if (memory == nullptr) throw std::bad_alloc();
        if (void* to = bytes.empty() ? nullptr : GlobalLock(memory)) {
            std::copy(bytes.begin(), bytes.end(), static_cast<unsigned char*>(to));
            GlobalUnlock(memory);
        }
        if (FAILED(CreateStreamOnHGlobal(memory, TRUE, &m_stream))) {
            GlobalFree(memory);
            throw std::bad_alloc();
        }
        ULARGE_INTEGER size{};
        size.QuadPart = bytes.size();
        m_stream->SetSize(size);
    }
    ~Stream() { m_stream->Release(); }
    Stream(const Stream&) = delete;
    Stream& operator=(const Stream&) = delete;

    IStream* get() { return m_stream; }

    std::string take() {
        STATSTG state{};
        HGLOBAL memory = nullptr;
        if (FAILED(m_stream->Stat(&state, STATFLAG_NONAME)) ||
            FAILED(GetHGlobalFromStream(m_stream, &memory)))
            return {};
        const auto* bytes = static_cast<const char*>(GlobalLock(memory));
        if (bytes == nullptr) return {};
        std::string taken(bytes, static_cast<std::size_t>(state.cbSize.QuadPart));
        GlobalUnlock(memory);
        return taken;
    }

private:
    IStream* m_stream = nullptr;
};

// Alpha 255: the pixel as it is.
std::uint32_t unmultiplied(std::uint32_t pixel) {
    const std::uint32_t alpha = pixel >> 24;
    if (alpha == 255) return pixel;
    if (alpha == 0) return 0;
    const auto channel = [&](int shift) {
        return std::min(((pixel >> shift & 0xff) * 255 + alpha / 2) / alpha, 255u) << shift;
    };
    return alpha << 24 | channel(16) | channel(8) | channel(0);
}

// Rows without gaps as GDI+ wants them for a bitmap without transparency: three bytes a pixel, each row a
// multiple of four.
std::vector<BYTE> packedRows(const AImage& image, INT& stride) {
    stride = (image.width() * 3 + 3) / 4 * 4;
    std::vector<BYTE> rows(static_cast<std::size_t>(stride) * static_cast<std::size_t>(image.height()));
    for (int y = 0; y < image.height(); ++y) {
        BYTE* to = &rows[static_cast<std::size_t>(y) * static_cast<std::size_t>(stride)];
        for (int x = 0; x < image.width(); ++x) {
            for (int shift = 0; shift < 24; shift += 8) *to++ = static_cast<BYTE>(image.at(x, y) >> shift);
        }
    }
    return rows;
}

std::string save(Gdiplus::Bitmap& bitmap) {
    static const CLSID kPng = {0x557cf406, 0x1a04, 0x11d3, {0x9a, 0x73, 0x00, 0x00, 0xf8, 0x1e, 0xf3, 0x2e}};
    Stream stream;
    if (bitmap.GetLastStatus() != Gdiplus::Ok || bitmap.Save(stream.get(), &kPng, nullptr) != Gdiplus::Ok)
        throw std::bad_alloc();
    return stream.take();
}

}  // namespace

std::string encodePng(const AImage& image) {
    if (image.empty()) return {};
    ensureGdiplus();
    const bool isOpaque = std::all_of(image.pixels().begin(), image.pixels().end(),
                                      [](std::uint32_t pixel) { return pixel >> 24 == 255; });
    if (isOpaque) {
        INT stride = 0;
        std::vector<BYTE> rows = packedRows(image, stride);
        Gdiplus::Bitmap bitmap(image.width(), image.height(), stride, PixelFormat24bppRGB, rows.data());
        return save(bitmap);
    }
    std::vector<std::uint32_t> pixels(image.pixels().size());
    std::transform(image.pixels().begin(), image.pixels().end(), pixels.begin(), unmultiplied);
    Gdiplus::Bitmap bitmap(image.width(), image.height(), image.width() * 4, PixelFormat32bppARGB,
                           reinterpret_cast<BYTE*>(pixels.data()));
    return save(bitmap);
}

AImage decodeImage(Bytes bytes) {
    const bool isPng = startsWith(bytes, {0x89, 'P', 'N', 'G', '\r', '\n', 0x1a, '\n'}) && isWholePng(bytes);
    const bool isJpeg = startsWith(bytes, {0xff, 0xd8, 0xff}) && isWholeJpeg(bytes);
    if (!isPng && !isJpeg) return {};
    ensureGdiplus();
    Stream stream(bytes);
    Gdiplus::Bitmap bitmap(stream.get());
    if (bitmap.GetLastStatus() != Gdiplus::Ok) return {};
    const auto width = static_cast<INT>(bitmap.GetWidth());
    const auto height = static_cast<INT>(bitmap.GetHeight());
    AImage image(width, height);
    Gdiplus::BitmapData data{};
    data.Width = static_cast<UINT>(width);
    data.Height = static_cast<UINT>(height);
    data.Stride = width * 4;
    data.PixelFormat = PixelFormat32bppARGB;
    data.Scan0 = image.pixels().data();
    const Gdiplus::Rect all(0, 0, width, height);
    if (bitmap.LockBits(&all, Gdiplus::ImageLockModeRead | Gdiplus::ImageLockModeUserInputBuf,
                        PixelFormat32bppARGB, &data) != Gdiplus::Ok) {
        return {};
    }
    bitmap.UnlockBits(&data);
    for (std::uint32_t& pixel : image.pixels()) {
        const std::uint32_t alpha = pixel >> 24;
        pixel = alpha << 24 | (scaledPixel(pixel, alpha) & 0xffffff);
    }
    return image;
}
