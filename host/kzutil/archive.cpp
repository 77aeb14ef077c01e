#include "kzutil/archive.h"

#include <algorithm>
#include <array>
#include <exception>
#include <utility>

// Layout. Numbers are little-endian, lengths count bytes unless they say otherwise, nothing is padded.
//
// The archive
//   offset  width  field     meaning
//   0       4      magic     "KZAR"
//   4       u32    version   1
//   8       u64    length    of the content
//   16      u64    checksum  FNV-1a (64 bits) of the content
//   24      length content   values, tagged records and objects, one after the other
//
// FNV-1a maps different inputs that differ in one byte to different sums, always: each of its steps
// can be undone.
//
// A number
//   0       i32    value
//
// A text
//   0       u64    count     of UTF-16 units
//   8       u16…   units     as they are, lone surrogates included
//
// A tagged record
//   0       u64    length    of the fields
//   8       length fields    each a tag (u8) followed by values, records and objects
//
// An object
//   0       text   class     its class name; an empty one is null, and nothing follows
//   n       u64    length    of the body
//   n + 8   length body      what the class's orbiSerialize wrote
//
// A reader leaves a record and a body at their end, whether it has read all of it or not: so a later version
// may add fields behind those that an earlier one knows.

namespace {

constexpr std::array<BYTE, 4> kMagic = {'K', 'Z', 'A', 'R'};
constexpr std::uint64_t kVersion = 1;
constexpr std::size_t kVersionAt = 4, kLengthAt = 8, kChecksumAt = 16, kContentAt = 24;

std::uint64_t checksumOf(const std::vector<BYTE>& archive) {
    std::uint64_t sum = 0xcbf29ce484222325u;
    for (std::size_t i = kContentAt; i < archive.size(); ++i) sum = (sum ^ archive[i]) * 0x100000001b3u;
    return sum;
}

std::uint64_t numberAt(const std::vector<BYTE>& bytes, std::size_t at, std::size_t width) {
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < width; ++i) value |= std::uint64_t{bytes[at + i]} << (8 * i);
    return value;
}

void setNumberAt(std::vector<BYTE>& bytes, std::size_t at, std::uint64_t value, std::size_t width) {
    for (std::size_t i = 0; i < width; ++i) bytes[at + i] = static_cast<BYTE>(value >> (8 * i));
}

}  // namespace

// Reading or writing one thing of several parts: when an exception ends it, the archive is put back
// to its begin.
class AArchive::Step {
public:
    explicit Step(AArchive& archive)
        : m_archive(archive), m_begin(archive.isLoading() ? archive.m_at : archive.m_bytes.size()) {}
    Step(const Step&) = delete;
    Step& operator=(const Step&) = delete;

    ~Step() {
        if (std::uncaught_exceptions() == m_exceptions) return;
        if (m_archive.isLoading())
            m_archive.m_at = m_begin;
        else
            m_archive.m_bytes.resize(m_begin);
    }

private:
    AArchive& m_archive;
    std::size_t m_begin;
    int m_exceptions = std::uncaught_exceptions();
};

AArchive::AArchive() : m_mode(storing), m_bytes(kContentAt) {}

AArchive::AArchive(std::vector<BYTE> bytes) : m_mode(loading), m_bytes(std::move(bytes)) {
    verify();
}

void AArchive::verify() {
    if (m_bytes.size() < kContentAt || !std::equal(kMagic.begin(), kMagic.end(), m_bytes.begin()))
        return fail("this is no archive");
    m_at = kVersionAt;
    if (numberAt(m_bytes, m_at, 4) != kVersion) return fail("the archive has another version");
    m_at = kLengthAt;
    if (numberAt(m_bytes, m_at, 8) != m_bytes.size() - kContentAt)
        return fail("the archive's length is wrong");
    m_at = kChecksumAt;
    if (numberAt(m_bytes, m_at, 8) != checksumOf(m_bytes)) return fail("the archive is damaged");
    m_at = kContentAt;
}

std::vector<BYTE> AArchive::takeBytes() {
    if (!canWrite()) return {};
    if (m_depth > 0) return fail("an archive is taken out of the hands of an object"), std::vector<BYTE>();
    if (!m_records.empty()) fail("a record is left open");
    std::vector<BYTE> fresh(kContentAt);
    closeRecords(0);
    std::copy(kMagic.begin(), kMagic.end(), m_bytes.begin());
    setNumberAt(m_bytes, kVersionAt, kVersion, 4);
    setNumberAt(m_bytes, kLengthAt, m_bytes.size() - kContentAt, 8);
    setNumberAt(m_bytes, kChecksumAt, checksumOf(m_bytes), 8);
    return std::exchange(m_bytes, std::move(fresh));
}

// No text is put together before somebody asks: an error can be told when memory has run out.
void AArchive::fail(const char* problem) {
    if (m_problem) return;
    m_problem = problem;
    m_problemAt = isLoading() ? m_at : m_bytes.size();
}

std::string AArchive::getError() const {
    return m_problem ? m_problem + (" (byte " + std::to_string(m_problemAt)) + ")" : std::string();
}

bool AArchive::canRead() {
    if (!isLoading()) fail("an archive that stores cannot be read");
    return isLoading() && !m_problem;
}

bool AArchive::canWrite() {
    if (isLoading()) fail("an archive that loads cannot be written");
    return !isLoading();
}

// Never negative: a record ends within the one around it, and m_at never passes the innermost end.
std::size_t AArchive::left() const {
    return (m_records.empty() ? m_bytes.size() : m_records.back().place) - m_at;
}

bool AArchive::readNumber(std::uint64_t& value, std::size_t width) {
    if (!canRead()) return false;
    if (left() < width) return fail("the record ends too early"), false;
    value = numberAt(m_bytes, m_at, width);
    m_at += width;
    return true;
}

// A length of things that take `unit` bytes each, and that all lie within the open record.
bool AArchive::readLength(std::uint64_t& length, std::size_t unit) {
    std::uint64_t found = 0;
    if (!readNumber(found, 8)) return false;
    if (found > left() / unit) return fail("a length reaches out of its record"), false;
    length = found;
    return true;
}

bool AArchive::readText(kzutil::WideString& text) {
    const Step step(*this);
    std::uint64_t count = 0;
    if (!readLength(count, 2)) return false;
    kzutil::WideString found(static_cast<std::size_t>(count), WCHAR());
    for (WCHAR& unit : found) {
        unit = static_cast<WCHAR>(numberAt(m_bytes, m_at, 2));
        m_at += 2;
    }
    text = std::move(found);
    return true;
}

void AArchive::writeNumber(std::uint64_t value, std::size_t width) {
    const std::size_t at = m_bytes.size();
    m_bytes.resize(at + width);
    setNumberAt(m_bytes, at, value, width);
}

void AArchive::writeText(kzutil::WideView text) {
    const Step step(*this);
    writeNumber(text.size(), 8);
    for (const WCHAR unit : text) writeNumber(unit, 2);
}

AArchive& AArchive::operator<<(int value) {
    if (canWrite()) writeNumber(static_cast<std::uint32_t>(value), 4);
    return *this;
}

AArchive& AArchive::operator>>(int& value) {
    std::uint64_t found = 0;
    if (readNumber(found, 4)) value = static_cast<int>(static_cast<std::uint32_t>(found));
    return *this;
}

AArchive& AArchive::operator<<(const AString& value) {
    if (canWrite()) writeText(value.view());
    return *this;
}

AArchive& AArchive::operator>>(AString& value) {
    kzutil::WideString found;
    if (readText(found)) value = AString(std::move(found));
    return *this;
}

void AArchive::openRecord(bool isObject) {
    const Step step(*this);
    writeNumber(0, 8);
    m_records.push_back({m_bytes.size(), isObject});
}

void AArchive::closeRecords(std::size_t remaining) {
    for (; m_records.size() > remaining; m_records.pop_back()) {
        const std::size_t place = m_records.back().place;
        setNumberAt(m_bytes, place - 8, m_bytes.size() - place, 8);
    }
}

void AArchive::TagStart() {
    if (!isLoading()) return openRecord(false);
    const Step step(*this);
    std::uint64_t length = 0;
    if (readLength(length, 1)) m_records.push_back({m_at + static_cast<std::size_t>(length), false});
}

void AArchive::Tag(BYTE tag) {
    if (!inTaggedRecord()) return fail("a tag stands outside of a record");
    if (!isLoading()) return writeNumber(tag, 1);
    const std::size_t at = m_at;
    std::uint64_t found = 0;
    if (!readNumber(found, 1) || found == tag) return;
    m_at = at;
    fail("another tag was expected");
}

void AArchive::TagEnd() {
    if (m_problem && isLoading()) return;
    if (!inTaggedRecord()) return fail("a record ends that was not begun");
    if (!isLoading()) return closeRecords(m_records.size() - 1);
    m_at = m_records.back().place;
    m_records.pop_back();
}
