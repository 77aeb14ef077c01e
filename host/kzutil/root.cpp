#include "kzutil/root.h"

#include "kzutil/archive.h"

namespace {

AClassDisplayStructureLookup displayStructureLookup = nullptr;

constexpr BYTE kVersionTag = 0;

}  // namespace

const AString& ARoot::getClassName() const {
    static const AString name(_T("ARoot"));
    return name;
}

UINT ARoot::getDisplayNameID() const {
    return 0;
}

UINT ARoot::getDisplayIconID() const {
    return 0;
}

// The base cannot know the class of the object in hand, so it creates nothing rather than a bare ARoot.
ARoot* ARoot::createInstance() const {
    return nullptr;
}

int ARoot::getVersion() const {
    return 0;
}

ARoot* ARoot::deepCopy() const {
    return nullptr;
}

// A record of its own, so that later bases may store more and earlier readers skip it. Any version is
// accepted: what a later version adds stands behind tags that this one does not ask for.
int ARoot::orbiSerialize(AArchive& archive) {
    int version = getVersion();
    archive.TagStart();
    archive.Tag(kVersionTag);
    if (archive.isLoading())
        archive >> version;
    else
        archive << version;
    archive.TagEnd();
    // Storing, an error is that of something stored before.
    return archive.isLoading() && !archive.getError().empty() ? 0 : 1;
}

ARoot* ARoot::convertToOutline() const {
    return nullptr;
}

int ARoot::shouldConvertToOutline() const {
    return 0;
}

int ARoot::getClassDisplayStructure(AString& structure) const {
    const int found = displayStructureLookup ? displayStructureLookup(getClassName(), structure) : 0;
    if (found == 0) structure.Empty();
    return found;
}

void setClassDisplayStructureLookup(AClassDisplayStructureLookup lookup) {
    displayStructureLookup = lookup;
}
