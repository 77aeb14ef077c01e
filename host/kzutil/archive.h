// AArchive: the host's tagged archive, over a buffer in memory.
//
//     AArchive out;                       AArchive in(out.takeBytes());
//     out.orbiWriteObject(&tool);         ARoot* tool = in.orbiReadObject();   // null: class unknown, or an error
//
// The layout stands above the code in archive.cpp. Nothing is read before the whole archive's length and checksum
// have been verified, and nothing is ever read outside the record that is open: a truncated or lying archive sets
// the error, and from then on every read gives zeros and null. Numbers are little-endian.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
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

    // Objects, by class name. Writing null is allowed. Reading creates the object through the class registry below
    // and runs its orbiSerialize; the caller owns it. Null for a stored null, for a class that is not registered (its
    // record is skipped, no error), and on an error.
    void orbiWriteObject(const ARoot* object);
    ARoot* orbiReadObject();

    // A tagged record: TagStart opens it, each Tag marks a field, TagEnd closes it (loading: skips what was not
    // read). Loading, Tag expects the tag and sets the error when another one stands there.
    void TagStart();
    void Tag(BYTE tag);
    void TagEnd();

    AArchive& operator<<(int value);
    AArchive& operator>>(int& value);
    AArchive& operator<<(const AString& value);
    AArchive& operator>>(AString& value);

    // Empty while all is well; else what is wrong and at which byte. The first error stays.
    const std::string& getError() const { return m_error; }

    // Storing: the finished archive, checksum included. Leaves this archive empty.
    std::vector<BYTE> takeBytes();

private:
    void fail(std::string_view reason);
    bool read(void* target, std::size_t size);
    void write(const void* source, std::size_t size);
    std::size_t limit() const;

    unsigned m_mode;
    std::vector<BYTE> m_bytes;
    std::size_t m_at = 0;
    std::vector<std::size_t> m_records;  // storing: where each open record's length stands; loading: where it ends
    int m_depth = 0;                     // objects inside objects
    std::string m_error;
};

// Classes that archives can create. A factory gives the new object to its caller, or null. Registering a name again
// replaces its factory; a null factory takes the name out.
using ARootFactory = ARoot* (*)();
void registerArchiveClass(const AString& className, ARootFactory factory);
