// ARoot: the root of everything that the host stores or creates by class name.
#pragma once

#include "kzutil/astring.h"
#include "platform/afx/object.h"

class AArchive;

// The virtual operations stand in slot order; hosts and plug-ins rely on it.
//
// An operation that creates (createInstance, deepCopy, convertToOutline) gives the new object to its caller,
// or null: the base gives null, since it cannot know the class.
class ARoot : public CObject {
public:
    ARoot() = default;
    ARoot(const ARoot&) = default;
    ARoot& operator=(const ARoot&) = default;
    ~ARoot() override = default;

    // The class's own name: what archives store and class tables list. "ARoot" unless overridden.
    virtual const AString& getClassName() const;
    // String and icon ids of a name and a picture for the user; 0: none.
    virtual UINT getDisplayNameID() const;
    virtual UINT getDisplayIconID() const;
    virtual ARoot* createInstance() const;
    virtual int getVersion() const;
    virtual ARoot* deepCopy() const;
    // Writes the object to a storing archive or reads it from a loading one. 1 on success, 0 on failure.
    // The base writes and reads its version number, in a record of its own, and refuses no version: 0 means
    // that the archive is unreadable.
    virtual int orbiSerialize(AArchive& archive);
    virtual ARoot* convertToOutline() const;
    virtual int shouldConvertToOutline() const;

    // The class's display structure ("Object/Rectangle"). 0, with an empty text, when it has none.
    int getClassDisplayStructure(AString& structure) const;
};

// How ARoot::getClassDisplayStructure finds a structure: the host's class configuration lies above this
// library and installs itself here. Null: no class has one.
using AClassDisplayStructureLookup = int (*)(const WCHAR* className, AString& structure);
void setClassDisplayStructureLookup(AClassDisplayStructureLookup lookup);
