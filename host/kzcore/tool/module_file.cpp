#include "kzcore/tool/module_file.h"

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <new>
#include <system_error>

namespace {

constexpr char kCutOff[] = "is damaged: the file is cut off";
constexpr char kNoModule[] = "is no module";

// The numbers of both formats are little-endian, as this program's are.
class ModuleReader {
public:
    explicit ModuleReader(const std::filesystem::path& file) : m_stream(file, std::ios::binary) {
        std::error_code error;
        m_size = std::filesystem::file_size(file, error);
        if (error) m_stream.setstate(std::ios::failbit);
    }

    bool isOpen() const { return m_stream.good(); }
    bool holds(std::uint64_t offset, std::uint64_t size) const {
        return offset <= m_size && size <= m_size - offset;
    }
    template <std::size_t size>
    bool read(std::uint64_t offset, std::array<char, size>& bytes) {
        if (!holds(offset, size)) return false;
        m_stream.seekg(static_cast<std::streamoff>(offset));
        m_stream.read(bytes.data(), size);
        return m_stream.good();
    }

private:
    std::ifstream m_stream;
    std::uint64_t m_size = 0;
};

template <class Number, std::size_t size>
Number numberAt(const std::array<char, size>& bytes, std::size_t offset) {
    Number number;
    std::memcpy(&number, bytes.data() + offset, sizeof number);
    return number;
}

// The header's table of segments, and of each its bytes in the file.
const char* sharedObjectProblem(ModuleReader& file) {
    std::array<char, 64> header;
    if (!file.read(0, header)) return kCutOff;
    constexpr char k64BitsLittleEndian[] = {2, 1};
    if (std::memcmp(header.data() + 4, k64BitsLittleEndian, 2) != 0) return kNoModule;
    const auto table = numberAt<std::uint64_t>(header, 32);
    const auto count = numberAt<std::uint16_t>(header, 56);
    std::array<char, 56> segment;
    if (numberAt<std::uint16_t>(header, 54) != segment.size() || count == 0) return kNoModule;
    if (!file.holds(table, segment.size() * count)) return kCutOff;
    for (unsigned i = 0; i < count; ++i) {
        if (!file.read(table + i * segment.size(), segment)) return kCutOff;
        if (!file.holds(numberAt<std::uint64_t>(segment, 8), numberAt<std::uint64_t>(segment, 32)))
            return kCutOff;
    }
    return "";
}

// The header's table of sections, and of each its bytes in the file.
const char* libraryProblem(ModuleReader& file) {
    std::array<char, 64> start;
    if (!file.read(0, start)) return kCutOff;
    const auto at = numberAt<std::uint32_t>(start, 60);
    std::array<char, 24> header;
    if (!file.read(at, header)) return kCutOff;
    if (std::memcmp(header.data(), "PE\0\0", 4) != 0) return kNoModule;
    const std::uint64_t table = std::uint64_t{at} + header.size() + numberAt<std::uint16_t>(header, 20);
    const auto count = numberAt<std::uint16_t>(header, 6);
    std::array<char, 40> section;
    for (unsigned i = 0; i < count; ++i) {
        if (!file.read(table + i * section.size(), section)) return kCutOff;
        if (!file.holds(numberAt<std::uint32_t>(section, 20), numberAt<std::uint32_t>(section, 16)))
            return kCutOff;
    }
    return "";
}

}  // namespace

std::string moduleFileProblem(const std::filesystem::path& file) {
    std::error_code ignored;
    if (!std::filesystem::exists(file, ignored)) return "there is no such file";
    errno = 0;
    ModuleReader reader(file);
    if (!reader.isOpen() && errno == ENOMEM) throw std::bad_alloc();
    if (!reader.isOpen()) return "cannot be read";
    std::array<char, 4> magic;
    if (!reader.read(0, magic)) return kNoModule;
    if (std::memcmp(magic.data(), "\177ELF", 4) == 0) return sharedObjectProblem(reader);
    if (std::memcmp(magic.data(), "MZ", 2) == 0) return libraryProblem(reader);
    return kNoModule;
}
