// Drawing objects and their containers.
//
//     ADatabase -> ALayer -> objects; groups, composites and effects hold further objects
//
// A document holds a million of them: they are made and owned by their ADocument (one arena), hold no
// resources of their own but a container's child list, and share brushes and pens through the document. Every
// object reports the class of its row in the class table, so most classes need no C++ class.
#pragma once

#include <cstdint>
#include <string_view>

#include "kzcore/document/class_info.h"
#include "kzutil/object_list.h"
#include "kzutil/rect.h"

class ABrush;
class ADocument;
class ALayer;
class AParent;
class APen;

enum EObjectFlags : std::uint32_t {
    kObjectSelected = 0x1,  // in its document's selection; kept by ASelection alone
    kObjectLocked = 0x2,    // the user may not select it
    kObjectBoundsPending =
        0x4,  // the bounding rectangle still has to be asked of the document's geometry source
    kObjectHidden =
        0x8000000,  // hidden by the document; set on objects that draw themselves, not on open containers
};

// Options of hasOption.
constexpr int kOptionClosed = 0x200;  // the children are not the user's: tools do not enter the container

class AObject : public ARoot {
public:
    explicit AObject(const AClassInfo& classInfo) : m_class(&classInfo) {}
    AObject(const AObject&) = delete;
    AObject& operator=(const AObject&) = delete;

    const AString& getClassName() const override { return m_class->name; }
    const AClassInfo& getClassInfo() const { return *m_class; }

    // Non-zero: the object is locked, tools pass over it.
    virtual int isUnselectable() const { return (m_flags & kObjectLocked) != 0; }
    virtual int hasOption(int option) const;
    // This object as a container, null for one that has no children: the run-time type test of AParent, at
    // the price of a virtual call, since walks make it for each of a million objects.
    virtual AParent* asParent() { return nullptr; }
    // The same for ALayer.
    virtual ALayer* asLayer() { return nullptr; }
    // The fill and the pen, null for an object that has none. Groups, effects and bitmaps have neither.
    virtual ABrush* getBrush() const { return m_brush; }
    virtual APen* getPen() const { return m_pen; }
    // The geometry's extent in drawing coordinates, without the stroke; a container's is that
    // of its children.
    virtual void getBoundingRect(AFRect& bounds) const;

    std::uint32_t getObjectFlags(EObjectFlags mask) const { return m_flags & mask; }
    void setObjectFlags(EObjectFlags mask, bool on) {
        m_flags = on ? m_flags | mask : m_flags & ~std::uint32_t{mask};
    }

    // The container, null at the top. A layer's parent is its database.
    static AParent* getParent(const AObject* object);
    AParent* getParent() const { return m_parent; }
    // Non-zero when `other` contains this object, directly or not. An object is not its own parent.
    int isParent(const AObject* other) const;

    // Appends the items of the object's own paint: the colour of a solid fill, else the brush item; then the
    // pen's colour, else its brush item. `which` is the host's and always 0x2003.
    void getAllReferItems(AObList& items, unsigned int which) const;

    // The object's name within its document, unique; empty for an object outside every document.
    AString getName() const;
    std::string_view getNameUtf8() const;

    // The document that holds the object's database, null when it is in none.
    ADocument* getDocument() const;

    // What the format that read the object needs to find it again in its source.
    std::uint32_t getSourceIndex() const { return m_source; }
    // The object's number in its document, in order of creation; 0 outside every document.
    std::uint32_t getIndex() const { return m_index; }

    void setBrush(ABrush* brush) { m_brush = brush; }
    void setPen(APen* pen) { m_pen = pen; }
    void setBoundingRect(const AFRect& bounds);
    void setSourceIndex(std::uint32_t source) { m_source = source; }

private:
    friend class ADocument;
    friend class AParent;

    AParent* m_parent = nullptr;
    const AClassInfo* m_class;
    ABrush* m_brush = nullptr;
    APen* m_pen = nullptr;
    mutable std::uint32_t m_flags = 0;
    std::uint32_t m_index = 0;
    std::uint32_t m_source = 0;
    mutable AFRect m_bounds;
};

// An object with children. Deleting a container does not delete them: the document owns all objects.
class AParent : public AObject {
public:
    using AObject::AObject;

    // In drawing order, bottom first. Change it through appendChild, which keeps the children's parent right.
    AObList children;

    void appendChild(AObject* child);

    AParent* asParent() override { return this; }
    ABrush* getBrush() const override { return nullptr; }
    APen* getPen() const override { return nullptr; }
    void getBoundingRect(AFRect& bounds) const override;
};

class AGroup : public AParent {
public:
    using AParent::AParent;
};

// A group that shows its children through its first child.
class AMask : public AGroup {
public:
    using AGroup::AGroup;
};

// Closed: its children belong to its own construction.
class AComposite : public AParent {
public:
    using AParent::AParent;
    int hasOption(int option) const override { return option & kOptionClosed; }
};

// Open: what is inside an effect is found by tools.
class AEffect : public AParent {
public:
    using AParent::AParent;
};

class ABitmap : public AObject {
public:
    // Colour models.
    enum EColorModel { rgb = 1, blackAndWhite = 2, grayscale = 3, cmyk = 4, indexed = 5, lab = 6 };

    using AObject::AObject;

    int getColorModel() const { return m_colorModel; }
    void setColorModel(int model) { m_colorModel = model; }
    ABrush* getBrush() const override { return nullptr; }
    APen* getPen() const override { return nullptr; }

private:
    int m_colorModel = rgb;
};

class ALayer : public AParent {
public:
    using AParent::AParent;

    ALayer* asLayer() override { return this; }

    const AString& getTitle() const { return m_title; }
    void setTitle(AString title) { m_title = std::move(title); }
    void setLocked(bool locked) { m_locked = locked; }
    void setHidden(bool hidden) { m_hidden = hidden; }
    bool isLocked() const { return m_locked; }
    bool isHidden() const { return m_hidden; }
    // Non-zero when objects of the layer may be selected and changed: it is neither locked nor hidden.
    int IsLayerEditable() const { return !m_locked && !m_hidden; }

private:
    AString m_title;
    bool m_locked = false;
    bool m_hidden = false;
};

// The layers of a document. A database's children are its layers.
class ADatabase : public AParent {
public:
    explicit ADatabase(ADocument& document);

    // Non-zero when no layer holds an object.
    int isEmpty() const;
    // Appends every object below the layers, depth-first, hidden and locked ones included; no layers.
    // `which` is the host's and always 0.
    void getAllObjects(AObList& objects, unsigned int which) const;

    ADocument& document() const { return m_document; }

private:
    ADocument& m_document;
};
