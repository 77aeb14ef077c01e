#include "kzcore/document/document.h"

#include <new>
#include <stdexcept>

ADocument::ADocument()
    : m_arena(std::in_place, &kzutil::largeBlocks()),
      m_database(std::make_unique<ADatabase>(*this)),
      m_secondary(std::make_unique<ADatabase>(*this)) {}

ADocument::~ADocument() {
    // Leaves hold nothing, so the arena may forget them; containers hold their child lists.
    for (AParent* container : m_containers) container->~AParent();
}

const AString& ADocument::getClassName() const {
    static const AString name(_T("ADocument"));
    return name;
}

template <class T>
T* ADocument::place(const AClassInfo& classInfo) {
    void* room = m_arena->allocate(sizeof(T), alignof(T));
    if constexpr (std::is_base_of_v<AParent, T>) {
        m_containers.push_back(nullptr);
        T* object = new (room) T(classInfo);
        m_containers.back() = object;
        return object;
    } else {
        return new (room) T(classInfo);
    }
}

AObject* ADocument::placeObject(const AClassInfo& classInfo) {
    static const AClassInfo& maskClass = *findClass(_T("AMask"));
    switch (classInfo.kind) {
        case AClassKind::leaf:
            return place<AObject>(classInfo);
        case AClassKind::bitmap:
            return place<ABitmap>(classInfo);
        case AClassKind::group:
            if (&classInfo == &maskClass) return place<AMask>(classInfo);
            return place<AGroup>(classInfo);
        case AClassKind::composite:
            return place<AComposite>(classInfo);
        case AClassKind::effect:
            return place<AEffect>(classInfo);
        default:
            throw std::invalid_argument("not a class of drawing objects");
    }
}

void ADocument::reserve(std::size_t objects) {
    m_objects.reserve(objects);
    m_names.reserve(objects);
    const bool untouched = m_objects.empty() && m_containers.empty();
    if (untouched && objects > 0) m_arena.emplace(objects * sizeof(AObject), &kzutil::largeBlocks());
}

AObject* ADocument::createObject(const AClassInfo& classInfo, std::string_view name) {
    AObject* object = tryCreateObject(classInfo, name);
    if (object == nullptr) throw std::invalid_argument("the name is empty or taken");
    return object;
}

// The name comes last, when nothing can fail any more: an object's number is that of its name. The room of an
// object whose name was taken stays unused.
AObject* ADocument::tryCreateObject(const AClassInfo& classInfo, std::string_view name) {
    if (m_objects.size() == m_objects.capacity()) m_objects.reserve(2 * m_objects.size() + 16);
    AObject* object = placeObject(classInfo);
    const std::uint32_t number = m_names.add(name);
    if (number == 0) return nullptr;
    object->m_index = number;
    m_objects.push_back(object);
    return object;
}

ALayer* ADocument::createLayer(ADatabase& database, const AClassInfo& layerClass, AString title) {
    if (layerClass.kind != AClassKind::layer) throw std::invalid_argument("not a class of layers");
    ALayer* layer = place<ALayer>(layerClass);
    layer->setTitle(std::move(title));
    database.appendChild(layer);
    return layer;
}

AObject* ADocument::findObject(std::string_view name) const {
    const std::uint32_t number = m_names.find(name);
    return number == 0 ? nullptr : m_objects[number - 1];
}
