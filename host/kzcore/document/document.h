// ADocument: a drawing. Owns its objects, its paint and its view.
//
//     ADocument document;
//     ALayer* layer = document.createLayer(document.getDatabase(), _T("ALayer"), _T("Layer 1"));
//     AObject* rectangle = document.createObject(*findClass(_T("ARectangle")), "rect-1");
//     layer->appendChild(rectangle);
#pragma once

#include <memory>
#include <memory_resource>
#include <optional>
#include <string>
#include <vector>

#include "kzcore/document/name_table.h"
#include "kzcore/document/object.h"
#include "kzcore/document/object_painter.h"
#include "kzcore/document/paint_table.h"
#include "kzutil/affine.h"
#include "kzutil/large_memory.h"

class ACanvas;
class ADisplayRecorder;

// What a format keeps of its file, to answer what the model does not hold. Owned by the document.
class AGeometrySource {
public:
    virtual ~AGeometrySource() = default;
    // The bounding rectangle, in drawing coordinates, of an object that this source read. Empty when
    // it has none.
    virtual AFRect computeBounds(const AObject& object) const = 0;
    // Starts a pass over the document that paints its objects on the canvas, which outlives the painter. Null
    // when this source cannot paint.
    virtual std::unique_ptr<AObjectPainter> startPainting(ACanvas& canvas, const AAffine& toPixels) const {
        static_cast<void>(canvas);
        static_cast<void>(toPixels);
        return nullptr;
    }
    // The same for a display list: what is painted, all of it visible, goes to the recorder, which outlives the
    // painter.
    virtual std::unique_ptr<AObjectPainter> startRecording(ADisplayRecorder& recorder) const {
        static_cast<void>(recorder);
        return nullptr;
    }
};

class ADocument : public ARoot {
public:
    ADocument();
    ~ADocument() override;
    ADocument(const ADocument&) = delete;
    ADocument& operator=(const ADocument&) = delete;

    const AString& getClassName() const override;

    ADatabase& getDatabase() { return *m_database; }
    // The master layers: drawn under every view.
    ADatabase* getSecondaryDatabase() { return m_secondary.get(); }
    APaintTable& getPaint() { return m_paint; }

    // Makes an object of a database class that is neither a layer nor an item. It belongs to the document and
    // is in no container yet. The name must be new to the document (see getNames().addUnique).
    AObject* createObject(const AClassInfo& classInfo, std::string_view name);
    // The same for a name that may not be new: null when it is taken or empty.
    AObject* tryCreateObject(const AClassInfo& classInfo, std::string_view name);
    // Takes room for so many objects at once, before the first of them is made.
    void reserve(std::size_t objects);
    // Makes a layer at the end of one of the two databases.
    ALayer* createLayer(ADatabase& database, const AClassInfo& layerClass, AString title);

    // The object of a name, null when there is none.
    AObject* findObject(std::string_view name) const;
    const ANameTable& getNames() const { return m_names; }
    ANameTable& getNames() { return m_names; }
    std::size_t getObjectCount() const { return m_objects.size(); }
    // By index, from 1 to getObjectCount().
    AObject* getObject(std::uint32_t index) const { return m_objects[index - 1]; }

    void setGeometrySource(std::unique_ptr<AGeometrySource> source) { m_source = std::move(source); }
    const AGeometrySource* getGeometrySource() const { return m_source.get(); }

    // The page in user units.
    const AFRect& getPage() const { return m_page; }
    // The pixels, 96 to the inch, that a user unit takes where a drawing is shown as large as it was made.
    double getPageScale() const { return m_pageScale; }
    void setPage(const AFRect& page, double scale) {
        m_page = page;
        m_pageScale = scale;
    }

private:
    template <class T>
    T* place(const AClassInfo& classInfo);
    AObject* placeObject(const AClassInfo& classInfo);

    std::optional<std::pmr::monotonic_buffer_resource> m_arena;  // holds all objects
    std::vector<AObject*> m_objects;
    std::vector<AParent*> m_containers;  // these hold lists, so their destructors must run
    ANameTable m_names;
    APaintTable m_paint;
    std::unique_ptr<AGeometrySource> m_source;
    std::unique_ptr<ADatabase> m_database;
    std::unique_ptr<ADatabase> m_secondary;
    AFRect m_page;
    double m_pageScale = 1;
};
