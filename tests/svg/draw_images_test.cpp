#include <zlib.h>

#include <span>
#include <string>
#include <string_view>

#include "canvas/image.h"
#include "support/small_images.h"
#include "svg/picture.h"

namespace svg_test {

namespace {

// A picture of two by two pixels: red, green; blue, white.
std::string png() {
    AImage image(2, 2);
    image.at(0, 0) = 0xffff0000;
    image.at(1, 0) = 0xff00ff00;
    image.at(0, 1) = 0xff0000ff;
    image.at(1, 1) = 0xffffffff;
    return encodePng(image);
}

std::string base64(const std::string& bytes) {
    constexpr char kDigits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        unsigned bits = 0;
        for (std::size_t k = 0; k < 3; ++k)
            bits = bits << 8 | (i + k < bytes.size() ? static_cast<unsigned char>(bytes[i + k]) : 0);
        for (std::size_t k = 0; k < 4; ++k)
            text += i + k <= bytes.size() ? kDigits[bits >> (18 - 6 * k) & 63] : '=';
    }
    return text;
}

void append32(std::string& bytes, unsigned long value) {
    for (int shift = 24; shift >= 0; shift -= 8) bytes += static_cast<char>(value >> shift & 0xff);
}

void appendChunk(std::string& file, std::string_view type, std::string_view data) {
    append32(file, data.size());
    std::string body(type);
    body += data;
    file += body;
    append32(file, crc32(0, reinterpret_cast<const Bytef*>(body.data()), static_cast<uInt>(body.size())));
}

// A black square, a bit to the pixel. Written by hand: in memory it would take as much as where it is decoded.
std::string blackPng(unsigned side) {
    std::string head;
    append32(head, side);
    append32(head, side);
    head += std::string("\1\0\0\0\0", 5);
    const std::string rows((side / 8 + 1) * std::size_t{side}, '\0');
    std::string data(compressBound(rows.size()), '\0');
    uLongf size = data.size();
    compress(reinterpret_cast<Bytef*>(data.data()), &size, reinterpret_cast<const Bytef*>(rows.data()),
             rows.size());
    data.resize(size);
    std::string file = "\x89PNG\r\n\x1a\n";
    appendChunk(file, "IHDR", head);
    appendChunk(file, "IDAT", data);
    appendChunk(file, "IEND", "");
    return file;
}

std::string percent(const std::string& bytes) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    std::string text;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        text += {'%', kDigits[byte >> 4], kDigits[byte & 15]};
    }
    return text;
}

std::string image(const std::string& attributes, const std::string& uri) {
    return "<image " + attributes + " href='" + uri + "' image-rendering='pixelated'/>";
}

std::string image(const std::string& attributes) {
    return image(attributes, "data:image/png;base64," + base64(png()));
}

}  // namespace

TEST(DrawImages, AnEmbeddedPictureFillsItsRectangle) {
    const Picture picture = drawBody(image("x='10' y='10' width='40' height='40'"));
    EXPECT_COLOR(picture, 11, 11, 0xff0000);
    EXPECT_COLOR(picture, 48, 11, 0x00ff00);
    EXPECT_COLOR(picture, 11, 48, 0x0000ff);
    EXPECT_COLOR(picture, 9, 11, 0xffffff);
    EXPECT_COLOR(picture, 51, 11, 0xffffff);
}

TEST(DrawImages, EscapedBytesAreReadToo) {
    const Picture picture =
        drawBody(image("width='40' height='40'", "data:image/png," + percent(png())) +
                 image("x='50' width='40' height='40'", "data:;base64,\n" + base64(png()) + "\n"));
    EXPECT_COLOR(picture, 5, 5, 0xff0000);
    EXPECT_COLOR(picture, 85, 5, 0x00ff00);
}

TEST(DrawImages, TheProportionsAreKeptAsTheDrawingSays) {
    EXPECT_COLOR(drawBody(image("width='80' height='40'")), 10, 5, 0xffffff);
    EXPECT_COLOR(drawBody(image("width='80' height='40'")), 25, 5, 0xff0000);
    EXPECT_COLOR(drawBody(image("width='80' height='40' preserveAspectRatio='xMinYMin'")), 10, 5, 0xff0000);
    EXPECT_COLOR(drawBody(image("width='80' height='40' preserveAspectRatio='none'")), 35, 5, 0xff0000);
}

TEST(DrawImages, ASliceIsCutToTheRectangle) {
    const Picture picture =
        drawBody(image("x='20' y='20' width='80' height='40' preserveAspectRatio='xMidYMid slice'"));
    EXPECT_COLOR(picture, 21, 21, 0xff0000);
    EXPECT_COLOR(picture, 21, 58, 0x0000ff);
    EXPECT_COLOR(picture, 21, 18, 0xffffff);
    EXPECT_COLOR(picture, 21, 62, 0xffffff);
}

TEST(DrawImages, AMissingSideFollowsThePicture) {
    EXPECT_COLOR(drawBody(image("width='40'")), 5, 35, 0x0000ff);
    EXPECT_COLOR(drawBody(image("")), 1, 0, 0x00ff00);
}

TEST(DrawImages, GifsAndWebpsAreReadToo) {
    const auto uri = [](const char* type, std::span<const unsigned char> bytes) {
        return "data:image/" + std::string(type) + ";base64," + base64({bytes.begin(), bytes.end()});
    };
    const Picture gif = drawBody(image("width='40' height='20'", uri("gif", test::kGifColors)));
    EXPECT_COLOR(gif, 5, 5, 0xff0000);
    EXPECT_COLOR(gif, 15, 5, 0x00ff00);
    EXPECT_COLOR(gif, 35, 5, 0xffffff);
    const Picture webp = drawBody(image("width='40' height='20'", uri("webp", test::kWebpColors)));
    EXPECT_COLOR(webp, 25, 5, 0x0000ff);
    EXPECT_COLOR(webp, 15, 15, 0xff8080);
    // What it is counts, not what it is said to be.
    EXPECT_COLOR(drawBody(image("width='40' height='20'", uri("png", test::kGifColors))), 5, 5, 0xff0000);
}

TEST(DrawImages, LargeOnesOfFewBytesAreReadUpToABudget) {
    // A file of 2048 by 2048 pixels, a thousand times; no two have the same text.
    std::string file(std::begin(test::kGifColors), std::end(test::kGifColors));
    file.replace(6, 4, std::string("\0\x08\0\x08", 4));
    std::string body;
    for (int i = 0; i < 1000; ++i)
        body += image("width='0' height='9'",
                      "data:image/gif;x=" + std::to_string(i) + ";base64," + base64(file));
    EXPECT_COLOR(drawBody(body + box("fill='red'")), 50, 50, 0xff0000);
}

TEST(DrawImages, OpacityAndTransformCount) {
    const Picture picture = drawBody(image("width='20' height='20' opacity='.5' transform='scale(2)'"));
    EXPECT_TRUE(hasColor(picture, 5, 5, 0xff8080, 4));
    EXPECT_TRUE(hasColor(picture, 35, 5, 0x80ff80, 4));
}

TEST(DrawImages, NothingOutsideTheDrawingIsOpened) {
    for (const char* uri :
         {"picture.png", "/etc/passwd", "file:///etc/passwd", "http://localhost/x.png", "#x"}) {
        EXPECT_EQ(drawBody(image("width='40' height='40'", uri)), drawBody("<g/>")) << uri;
    }
}

TEST(DrawImages, DamagedPicturesAndHostileSizesDrawNothing) {
    const std::string data = base64(png());
    for (const std::string& uri :
         {std::string("data:"), std::string("data:,"), std::string("data:image/png;base64,"),
          "data:image/png;base64," + data.substr(0, data.size() / 2),
          std::string("data:image/png;base64,%%%"), std::string("data:image/svg+xml,%3Csvg/%3E")}) {
        EXPECT_COLOR(drawBody(image("width='40' height='40'", uri)), 5, 5, 0xffffff);
    }
    for (const char* size : {"1e30", "-1e30", "0", "1e-30", "nan"}) {
        const std::string s = size;
        const Picture picture = drawBody(image("x='" + s + "' width='" + s + "' height='" + s + "'") +
                                         "<rect x='190' y='90' width='10' height='10' fill='red'/>");
        EXPECT_COLOR(picture, 195, 95, 0xff0000) << size;
    }
}

constexpr char kInner[] =
    "data:image/svg+xml,%3Csvg xmlns=%22http://www.w3.org/2000/svg%22 viewBox=%220 0 20 10%22%3E"
    "%3Crect width=%2220%22 height=%2210%22 fill=%22blue%22/%3E%3Crect width=%2210%22 height=%2210%22 "
    "fill=%22red%22/%3E%3C/svg%3E";

TEST(DrawInnerDrawings, FillTheirImage) {
    const std::string href = " href='" + std::string(kInner) + "'/>";
    const Picture picture = drawBody("<image x='20' y='20' width='100' height='60'" + href);
    EXPECT_COLOR(picture, 30, 50, kRed);
    EXPECT_COLOR(picture, 110, 50, kBlue);
    EXPECT_COLOR(picture, 30, 22, kWhite);
    // Its view box is its size.
    EXPECT_COLOR(drawBody("<image x='100' y='50' opacity='0.5'" + href), 115, 55, 0x8080ff);
    EXPECT_COLOR(drawBody("<image width='100' height='100' preserveAspectRatio='none'" + href), 75, 5, kBlue);
}

TEST(DrawInnerDrawings, WithinOneAreNotDrawn) {
    std::string inner = kInner;
    for (std::size_t at = 0; (at = inner.find('%', at)) != inner.npos; at += 3) inner.replace(at, 1, "%25");
    const Picture picture = drawBody(
        "<image width='200' height='100' href='data:image/svg+xml,%3Csvg "
        "xmlns=%22http://www.w3.org/2000/svg%22 "
        "width=%22200%22 height=%22100%22%3E%3Crect width=%22100%22 height=%22100%22 "
        "fill=%22lime%22/%3E%3Cimage "
        "width=%22200%22 height=%22100%22 href=%22" +
        inner + "%22/%3E%3C/svg%3E'/>");
    EXPECT_COLOR(picture, 50, 50, kLime);
    EXPECT_COLOR(picture, 150, 50, kWhite);
}

TEST(DrawInnerDrawings, CostWhatTheyRepeat) {
    // Ten thousand images of ten thousand elements each: the budget of the picture ends it.
    std::string inner = "data:image/svg+xml,%3Csvg xmlns=%22http://www.w3.org/2000/svg%22%3E";
    for (int i = 0; i < 10000; ++i) inner += "%3Cg/%3E";
    inner += "%3C/svg%3E";
    std::string body = "<image id='i' width='9' height='9' href='" + inner + "'/>";
    for (int i = 0; i < 10000; ++i) body += "<use href='#i'/>";
    EXPECT_COLOR(drawBody(body + box("fill='red'")), 50, 50, kRed);
}

TEST(DrawInnerDrawings, FillFilterSteps) {
    const Picture picture = drawBody("<filter id='f'><feImage x='20' y='10' width='40' height='20' href='" +
                                     std::string(kInner) + "'/></filter>" + box("filter='url(#f)'"));
    EXPECT_COLOR(picture, 30, 20, kRed);
    EXPECT_COLOR(picture, 50, 20, kBlue);
    EXPECT_COLOR(picture, 100, 50, kWhite);
}

TEST(DrawImages, AMuchReducedPictureShowsTheMeanOfItsPixels) {
    AImage stripes(501, 301);  // no power of two, nor a multiple of one
    for (int y = 0; y < stripes.height(); ++y) {
        for (int x = 0; x < stripes.width(); ++x)
            stripes.at(x, y) = x >= 250 ? 0xff0000ff : (x + y) % 2 == 0 ? 0xffff0000 : 0xffffffff;
    }
    const std::string attributes = "x='10' width='20' height='20' preserveAspectRatio='none'";
    const std::string uri = "data:image/png;base64," + base64(encodePng(stripes));
    const Picture picture = drawBody("<image " + attributes + " href='" + uri + "'/>");
    EXPECT_TRUE(hasColor(picture, 13, 10, 0xff8080, 2));
    EXPECT_TRUE(hasColor(picture, 10, 0, 0xff8080, 2)) << "up to its edges";
    EXPECT_TRUE(hasColor(picture, 29, 19, 0x0000ff, 2));
    EXPECT_COLOR(picture, 9, 10, 0xffffff);
    EXPECT_COLOR(picture, 30, 10, 0xffffff);
    EXPECT_COLOR(picture, 13, 20, 0xffffff);
}

// Bombs are a few kilobytes that become a gigabyte. Their heads tell, so that nothing is decoded of those beyond.
TEST(DrawImages, OfADrawingHaveABoundedNumberOfPixelsForTheirBytes) {
    const auto dataUri = [](const std::string& bytes) { return "data:image/png;base64," + base64(bytes); };
    const std::string size = "width='20' height='20'";
    const std::string large = image("x='20' " + size, dataUri(blackPng(4096)));
    const std::string small = image("x='40' " + size, dataUri(png()));
    EXPECT_COLOR(drawBody(large), 30, 10, 0x000000);
    std::string bomb = blackPng(8);
    bomb.replace(16, 8, std::string("\0\0\x3e\x80\0\0\x3e\x80", 8));  // 16000 by 16000
    const Picture picture = drawBody(image(size, dataUri(bomb)) + large + small);
    EXPECT_COLOR(picture, 30, 10, 0xffffff);
    EXPECT_COLOR(picture, 42, 2, 0xff0000);
}

}  // namespace svg_test
