#include "formats/svg/xml/gzip.h"

#include <algorithm>
#include <memory>
#include <new>

#include <zlib.h>

namespace svg {

namespace {

constexpr int kGzip = 16;  // beside the window's size: with gzip's header and checksum
constexpr std::size_t kPiece = std::size_t{1} << 18;

// Texts of drawings shrink to a tenth, to a fiftieth where they repeat themselves; a bomb shrinks to a thousandth. What is
// small when unpacked harms nobody.
constexpr std::size_t kMostGrowth = 256;
constexpr std::size_t kAlwaysAllowed = std::size_t{64} << 20;

// zlib's state, ended with the block.
struct Inflating : z_stream {
    Inflating() : z_stream{} {
        if (inflateInit2(this, MAX_WBITS + kGzip) != Z_OK) throw std::bad_alloc();
    }
    ~Inflating() { inflateEnd(this); }
    Inflating(const Inflating&) = delete;
    Inflating& operator=(const Inflating&) = delete;
};

struct Deflating : z_stream {
    Deflating() : z_stream{} {
        constexpr int kUsualMemory = 8;
        if (deflateInit2(this, Z_DEFAULT_COMPRESSION, Z_DEFLATED, MAX_WBITS + kGzip, kUsualMemory,
                         Z_DEFAULT_STRATEGY) != Z_OK)
            throw std::bad_alloc();
    }
    ~Deflating() { deflateEnd(this); }
    Deflating(const Deflating&) = delete;
    Deflating& operator=(const Deflating&) = delete;
};

// Hands the stream the next bytes, when it has none: it counts them in 32 bits.
void feed(z_stream& stream, std::string_view& rest) {
    if (stream.avail_in > 0 || rest.empty()) return;
    const std::size_t count = std::min(rest.size(), std::size_t{1} << 31);
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(rest.data()));
    stream.avail_in = static_cast<uInt>(count);
    rest.remove_prefix(count);
}

// What stands behind a member: nothing, where it is zeros, with which tapes fill up.
std::string_view behind(const z_stream& stream) {
    const std::string_view rest(reinterpret_cast<const char*>(stream.next_in), stream.avail_in);
    return rest.find_first_not_of('\0') == rest.npos ? std::string_view() : rest;
}

const char* reasonOf(int result) {
    if (result == Z_MEM_ERROR) throw std::bad_alloc();
    return result == Z_BUF_ERROR ? "its compressed data is cut off" : "its compressed data is damaged";
}

}  // namespace

bool isGzip(std::string_view bytes) {
    return bytes.starts_with("\x1F\x8B");
}

std::optional<std::string> gunzip(std::string_view bytes, std::string& reason) {
    const std::size_t most = std::max(kAlwaysAllowed, bytes.size() * kMostGrowth);
    const auto piece = std::make_unique_for_overwrite<char[]>(kPiece);
    Inflating stream;
    std::string text;
    while (true) {
        feed(stream, bytes);
        stream.next_out = reinterpret_cast<Bytef*>(piece.get());
        stream.avail_out = kPiece;
        const int result = inflate(&stream, Z_NO_FLUSH);
        text.append(piece.get(), kPiece - stream.avail_out);
        if (text.size() > most) {
            reason =
                "its compressed data grows to more than " + std::to_string(kMostGrowth) + " times its size";
            return {};
        }
        if (result == Z_STREAM_END) {
            feed(stream, bytes);
            const std::string_view rest = behind(stream);
            if (rest.empty()) return text;
            if (!isGzip(rest)) {
                reason = "behind its compressed data stands something else";
                return {};
            }
            inflateReset(&stream);
        } else if (result != Z_OK) {
            reason = reasonOf(result);
            return {};
        }
    }
}

std::string gzip(std::string_view bytes) {
    const auto piece = std::make_unique_for_overwrite<char[]>(kPiece);
    Deflating stream;
    gz_header header{};
    header.os = 255;  // unknown; zlib would write which system it was built for
    deflateSetHeader(&stream, &header);
    std::string packed;
    int result = Z_OK;
    while (result != Z_STREAM_END) {
        feed(stream, bytes);
        stream.next_out = reinterpret_cast<Bytef*>(piece.get());
        stream.avail_out = kPiece;
        result = deflate(&stream, bytes.empty() ? Z_FINISH : Z_NO_FLUSH);
        packed.append(piece.get(), kPiece - stream.avail_out);
    }
    return packed;
}

}  // namespace svg
