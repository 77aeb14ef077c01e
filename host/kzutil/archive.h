// AArchive: the host's tagged archive, over a buffer in memory.
//
//     AArchive out;                       AArchive in(out.takeBytes());
//     out.orbiWriteObject(&tool);         ARoot* tool = in.orbiReadObject();   // null: class unknown, or an
//     error
//
// The layout stands above the code in archive.cpp. Nothing is read before the whole archive's length and
// checksum have been verified, and nothing is ever read outside the record that is open: a truncated or lying
// archive sets the error, and from then on every read leaves its argument as it was and gives null.
//
// Storing goes on after an error, since what is stored stays well-formed: an object that could not be stored
// is read back as null. Who stores asks getError at the end.
//
// An exception (bad_alloc, or whatever a class throws) passes through a call and leaves the archive as it was
// before it, an object that was being read deleted.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "kzutil/root.h"

class AArchive {
public:
    // Bit 0 of the mode: set while loading, clear while storing.
    enum Mode : unsigned { storing = 0, loading = 1 };

    AArchive();                                  // storing
    explicit AArchive(std::vector<BYTE> bytes);  // loading

    unsigned getMode() const { return m_mode; }
    bool isLoading() const { return (m_mode & loading) != 0; }

    // Objects, by class name, at most 64 inside one another. Writing null is allowed. Reading creates the
    // object through the class registry below and runs its orbiSerialize; the caller owns it. Null for a
    // stored null, for a class that is not registered (its record is skipped, no error), and on an error. An
    // orbiSerialize that returns 0 is an error, and may leave its records open: they end with the object.
    void orbiWriteObject(const ARoot* object);
    ARoot* orbiReadObject();

    // A tagged record: TagStart opens it, each Tag marks a field, TagEnd closes it (loading: skips what was
    // not read). Loading, Tag expects the tag and sets the error when another one stands there.
    void TagStart();
    void Tag(BYTE tag);
    void TagEnd();

    AArchive& operator<<(int value);
    AArchive& operator>>(int& value);
    AArchive& operator<<(const AString& value);
    AArchive& operator>>(AString& value);

    // Empty while all is well; else what is wrong and at which byte. The first error stays.
    std::string getError() const;

    // Storing: the finished archive, checksum included. Leaves this archive empty, its error as it was. A
    // record that is still open is closed, which is an error. Loading: nothing, which is an error.
    std::vector<BYTE> takeBytes();

private:
    // Storing: where the record's content begins, behind its length. Loading: where it ends.
    struct Record {
        std::size_t place;
        bool isObject;  // TagEnd does not close it, and no tag stands directly in it
    };
    class ObjectFrame;
    class Step;

    void fail(const char* problem);
    bool canRead();
    bool canWrite();
    std::size_t left() const;  // loading: how many bytes the open record still has
    bool inTaggedRecord() const { return !m_records.empty() && !m_records.back().isObject; }

    bool readNumber(std::uint64_t& value, std::size_t width);
    bool readLength(std::uint64_t& length, std::size_t unit);
    bool readText(kzutil::WideString& text);
    void writeNumber(std::uint64_t value, std::size_t width);
    void writeText(kzutil::WideView text);

    void verify();
    bool store(const ARoot& object);
    void openRecord(bool isObject);
    void closeRecords(std::size_t remaining);

    unsigned m_mode;
    std::vector<BYTE> m_bytes;
    std::size_t m_at = 0;  // loading
    std::vector<Record> m_records;
    int m_depth = 0;         // objects inside objects
    bool m_tooDeep = false;  // storing: the outermost object is being given up
    const char* m_problem = nullptr;
    std::size_t m_problemAt = 0;
};

// Classes that archives can create. A factory gives the new object to its caller, or null. Registering a name
// again replaces its factory; a null factory takes the name out, which a module does before it goes. May be
// called from static initialisers.
using ARootFactory = std::function<ARoot*()>;
void registerArchiveClass(const AString& className, ARootFactory factory);
bool isArchiveClass(const AString& className);
