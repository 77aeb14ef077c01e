// Objects in archives, and the registry of the classes that archives can create.
#include <map>
#include <memory>

#include "kzutil/archive.h"

namespace {

constexpr int kDeepest = 64;

using Registry = std::map<kzutil::WideString, ARootFactory, std::less<>>;

// Made by whoever comes first, some module's static initialiser; never destroyed, since the same modules'
// last acts may come after this library's.
Registry& registry() {
    static Registry& classes = *new Registry;
    return classes;
}

}  // namespace

void registerArchiveClass(const AString& className, ARootFactory factory) {
    if (factory) {
        registry().insert_or_assign(kzutil::WideString(className.view()), factory);
        return;
    }
    const auto found =
        registry().find(className.view());  // takes no memory: modules go when there may be none
    if (found != registry().end()) registry().erase(found);
}

bool isArchiveClass(const AString& className) {
    return registry().contains(className.view());
}

// One object being stored or loaded. At its end, on every way out, the records inside it are closed, however
// many its class left open. Unless it was finished, the archive then stands where the object begins.
class AArchive::ObjectFrame {
public:
    ObjectFrame(AArchive& archive, std::size_t begin)
        : m_archive(archive), m_outerRecords(archive.m_records.size()), m_place(begin) {
        ++m_archive.m_depth;
    }
    ObjectFrame(const ObjectFrame&) = delete;
    ObjectFrame& operator=(const ObjectFrame&) = delete;

    ~ObjectFrame() {
        m_archive.m_records.resize(m_outerRecords, {});
        if (m_archive.isLoading())
            m_archive.m_at = m_place;
        else
            m_archive.m_bytes.resize(m_place);
        if (--m_archive.m_depth == 0) m_archive.m_tooDeep = false;
    }

    void finishStoring() {
        m_archive.closeRecords(m_outerRecords);
        m_place = m_archive.m_bytes.size();
    }
    void finishLoading(std::size_t end) { m_place = end; }

private:
    AArchive& m_archive;
    std::size_t m_outerRecords;
    std::size_t m_place;
};

void AArchive::orbiWriteObject(const ARoot* object) {
    if (!canWrite()) return;
    if (!object) return writeText({});
    if (m_depth == kDeepest) m_tooDeep = true;
    // Objects that contain one another would be followed for ever: the whole outermost one is given up.
    if (m_tooDeep) return fail("objects lie too deep inside one another");
    if (store(*object)) return;
    fail("an object could not be stored");
    writeText({});
}

bool AArchive::store(const ARoot& object) {
    const AString& name = object.getClassName();
    if (name.IsEmpty()) return false;
    ObjectFrame frame(*this, m_bytes.size());
    writeText(name.view());
    openRecord(true);
    // orbiSerialize serves both directions; storing, it does not change its object.
    if (const_cast<ARoot&>(object).orbiSerialize(*this) == 0 || m_tooDeep) return false;
    frame.finishStoring();
    return true;
}

ARoot* AArchive::orbiReadObject() {
    const std::size_t begin = m_at;
    kzutil::WideString name;
    std::uint64_t length = 0;
    if (!readText(name) || name.empty() || !readLength(length, 1)) return nullptr;
    const std::size_t end = m_at + static_cast<std::size_t>(length);
    const auto found = registry().find(name);
    if (found == registry().end()) {
        m_at = end;
        return nullptr;
    }
    if (m_depth == kDeepest) return fail("objects lie too deep inside one another"), nullptr;

    ObjectFrame frame(*this, begin);
    m_records.push_back({end, true});
    std::unique_ptr<ARoot> object(found->second());
    if (!object)
        fail("an object could not be created");
    else if (object->orbiSerialize(*this) == 0)
        fail("an object could not be read");
    frame.finishLoading(end);
    return m_problem ? nullptr : object.release();
}
