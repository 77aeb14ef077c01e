#include "formats/svg/reader.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <new>
#include <optional>
#include <system_error>

#include <pugixml.hpp>

#include "formats/svg/drawing_source.h"
#include "formats/svg/import/importer.h"
#include "formats/svg/values/text_scan.h"
#include "formats/svg/xml/encoding.h"
#include "formats/svg/xml/entities.h"
#include "formats/svg/xml/gzip.h"
#include "formats/svg/xml/xml_memory.h"
#include "kzutil/large_memory.h"

namespace svg {

namespace {

// Offsets of elements are kept in 32 bits, and a drawing of that size would not fit anyway.
constexpr std::uintmax_t kLargestFile = std::uintmax_t{2} << 30;
constexpr char kTooLarge[] = "the file is larger than 2 GiB";

const bool kHasLargeXmlMemory = useLargeXmlMemory();

// The bytes of a file, in memory that is not cleared first.
struct Buffer {
    struct Free {
        void operator()(char* block) const { kzutil::freeLarge(block); }
    };

    explicit Buffer(std::size_t bytes) : data(static_cast<char*>(kzutil::allocateLarge(bytes))), size(bytes) {
        if (!data) throw std::bad_alloc();
    }

    std::unique_ptr<char[], Free> data;
    std::size_t size;
};

std::string copyOf(const Buffer& buffer) {
    std::string text;
    text.reserve(buffer.size);
    if (buffer.size >= 2 * kzutil::kLargePage) kzutil::preferLargePages(text.data(), buffer.size);
    text.assign(buffer.data.get(), buffer.size);
    return text;
}

std::string nameOf(const std::filesystem::path& file) {
    const std::u8string text = file.u8string();
    return {text.begin(), text.end()};
}

// Control characters of names and elements would break the one line.
std::string printable(std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](unsigned char c) { return c < 0x20 || c == 0x7F; }, '?');
    return text;
}

// Whether a tag may come first, in whatever encoding; a file of nothing but space is not read to its end.
bool startsLikeXml(std::string_view bytes) {
    constexpr std::string_view kBefore("\0\xEF\xBB\xBF\xFE\xFF \t\r\n", 10);
    const std::size_t first = bytes.find_first_not_of(kBefore);
    return first != bytes.npos && bytes[first] == '<';
}

std::unique_ptr<ADocument> fail(std::string& error, std::string_view name, std::string_view reason) {
    error = printable(std::string(name) + ": " + std::string(reason));
    return nullptr;
}

std::unique_ptr<ADocument> failAt(std::string& error, std::string_view name, std::string_view text,
                                  std::size_t offset, std::string_view reason) {
    offset = std::min(offset, text.size());
    const auto line = 1 + std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(offset), '\n');
    error = printable(std::string(name) + ':' + std::to_string(line) + ": " + std::string(reason));
    return nullptr;
}

std::string_view reasonOf(const pugi::xml_parse_result& result, std::size_t size) {
    using enum pugi::xml_parse_status;
    if (result.status == status_no_document_element) return "there is no element in it";
    // The parser may stop one short of the end.
    if (static_cast<std::size_t>(result.offset) + 1 >= size)
        return "the file ends in the middle of the drawing";
    switch (result.status) {
        case status_unrecognized_tag:
            return "\"<\" does not start an element here";
        case status_bad_pi:
            return "a processing instruction is not closed";
        case status_bad_comment:
            return "a comment is not closed";
        case status_bad_cdata:
            return "a CDATA section is not closed";
        case status_bad_doctype:
            return "the document type is broken";
        case status_bad_pcdata:
            return "a text is broken";
        case status_bad_start_element:
            return "a start tag is broken";
        case status_bad_attribute:
            return "an attribute is broken";
        case status_bad_end_element:
            return "an end tag is broken";
        case status_end_element_mismatch:
            return "an end tag does not match its start tag";
        case status_no_document_element:
            return "there is no element in it";
        default:
            return "this is not XML";
    }
}

bool isDrawingRoot(pugi::xml_node root) {
    Namespaces namespaces;
    AttributeSet attributes;
    attributes.read(root, namespaces);
    return elementOf(root, namespaces) == Element::svg;
}

std::string tagOf(pugi::xml_node node) {
    constexpr std::size_t kLongest = 60;
    return '<' + std::string(node.name()).substr(0, kLongest) + '>';
}

std::size_t offsetOf(pugi::xml_node node) {
    return static_cast<std::size_t>(std::max<std::ptrdiff_t>(node.offset_debug(), 0));
}

// The second element at the top, null when there is one only.
pugi::xml_node secondRoot(pugi::xml_node root) {
    for (pugi::xml_node next = root.next_sibling(); next; next = next.next_sibling()) {
        if (next.type() == pugi::node_element) return next;
    }
    return {};
}

// The parser cuts its buffer into pieces, so it works on a copy of the text, which is gone when the document
// is made. `copy` holds the bytes once more, or nothing.
std::unique_ptr<ADocument> readText(std::string bytes, std::optional<Buffer> copy, std::string_view name,
                                    std::string& error, ReadingWatch* watch) {
    if (bytes.empty()) return fail(error, name, "the file is empty");
    if (bytes.size() > kLargestFile) return fail(error, name, kTooLarge);
    if (isGzip(bytes)) {
        std::string reason;
        std::optional<std::string> unpacked = gunzip(bytes, reason);
        if (!unpacked) return fail(error, name, reason);
        bytes = std::move(*unpacked);
        copy.reset();
        if (bytes.empty()) return fail(error, name, "the file is empty");
        if (bytes.size() > kLargestFile) return fail(error, name, kTooLarge);
    }
    const void* const original = bytes.data();
    const bool hadMark = bytes.starts_with("\xEF\xBB\xBF");
    convertToUtf8(bytes);
    EntityError entityError;
    std::vector<EntityUse> entityUses;
    if (!expandEntities(bytes, entityError, entityUses))
        return failAt(error, name, bytes, entityError.offset, entityError.reason);

    if (!copy || bytes.data() != original || bytes.size() != copy->size) {  // none, or converted since
        copy.emplace(bytes.size());
        std::memcpy(copy->data.get(), bytes.data(), bytes.size());
    }
    pugi::xml_document xml;
    const pugi::xml_parse_result result =
        xml.load_buffer_inplace(copy->data.get(), copy->size, pugi::parse_default, pugi::encoding_utf8);
    if (result.status == pugi::status_out_of_memory) throw std::bad_alloc();
    if (!result) {
        const bool nothing = result.status == pugi::status_no_document_element;
        const std::size_t offset = nothing ? 0 : static_cast<std::size_t>(result.offset);
        return failAt(error, name, bytes, offset, reasonOf(result, bytes.size()));
    }
    const pugi::xml_node root = xml.document_element();
    if (!isDrawingRoot(root)) {
        return failAt(error, name, bytes, offsetOf(root),
                      "this is no SVG drawing: its root is " + tagOf(root));
    }
    if (const pugi::xml_node second = secondRoot(root)) {
        return failAt(error, name, bytes, offsetOf(second), "a second root element " + tagOf(second));
    }
    DrawingIndex index;
    pugi::xml_node culprit;
    if (const char* const reason = index.build(root, culprit))
        return failAt(error, name, bytes, offsetOf(culprit), reason);
    auto document = std::make_unique<ADocument>();
    UserSpace space;
    const auto goesOn = [&](std::size_t elements) {
        if (!watch) return true;
        watch->done = static_cast<double>(elements) / static_cast<double>(index.elementCount() + 1);
        return !watch->cancelled;
    };
    if (!Importer(*document, index).run(root, space, goesOn)) {
        return fail(error, name,
                    watch && watch->cancelled ? "opening it was cancelled"
                                              : "its style sheets have too many rules for its elements");
    }
    auto source = std::make_unique<DrawingSource>(std::move(bytes), space);
    source->noteChanges(std::move(entityUses), hadMark);
    document->setGeometrySource(std::move(source));
    return document;
}

}  // namespace

std::unique_ptr<ADocument> readDrawingBytes(std::string bytes, std::string_view name, std::string& error) {
    return readText(std::move(bytes), std::nullopt, name, error, nullptr);
}

std::unique_ptr<ADocument> readDrawing(const std::filesystem::path& file, std::string& error,
                                       ReadingWatch* watch) {
    const std::string name = nameOf(file);
    std::error_code failure;
    const std::filesystem::file_status status = std::filesystem::status(file, failure);
    if (status.type() == std::filesystem::file_type::not_found)
        return fail(error, name, "there is no such file");
    if (failure) return fail(error, name, "cannot be read: " + failure.message());
    if (status.type() == std::filesystem::file_type::directory) return fail(error, name, "is a folder");

    errno = 0;
    std::ifstream stream(file, std::ios::binary);
    if (!stream) {
        const std::string reason = errno != 0 ? std::generic_category().message(errno) : "it does not open";
        return fail(error, name, "cannot be read: " + reason);
    }
    std::string bytes;
    std::optional<Buffer> buffer;
    if (status.type() == std::filesystem::file_type::regular) {
        const std::uintmax_t size = std::filesystem::file_size(file, failure);
        if (!failure && size > kLargestFile) return fail(error, name, kTooLarge);
        buffer.emplace(failure ? 0 : static_cast<std::size_t>(size));
        stream.read(buffer->data.get(), static_cast<std::streamsize>(buffer->size));
        buffer->size = static_cast<std::size_t>(stream.gcount());
        bytes = copyOf(*buffer);
    }
    // A pipe, or a file that grows while it is read. A device may never end: its first bytes tell.
    char piece[1 << 16];
    while (stream && bytes.size() <= kLargestFile &&
           (bytes.empty() || startsLikeXml(bytes) || isGzip(bytes))) {
        stream.read(piece, sizeof piece);
        bytes.append(piece, static_cast<std::size_t>(stream.gcount()));
    }
    if (stream.bad()) return fail(error, name, "cannot be read to its end");
    return readText(std::move(bytes), std::move(buffer), name, error, watch);
}

}  // namespace svg
