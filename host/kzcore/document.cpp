#include "kzcore/document.h"

#include <new>
#include <stdexcept>

#include "kzcore/view.h"

ADocument::ADocument()
    : m_database(std::make_unique<ADatabase>(*this)),
      m_secondary(std::make_unique<ADatabase>(*this)),
      m_view(std::make_unique<ADocView>(*this)) {}

ADocument::~ADocument() {
    m_view.reset();  // its filter may hold references on paint
    // Leaves hold nothing, so the arena may forget them; containers hold their child lists.
    for (AParent* container : m_containers) container->~AParent();
}

const AString& ADocument::getClassName() const {
    static const AString name(_T("ADocument"));
    return name;
}

template <class T>
T* ADocument::place(const AClassInfo& classInfo) {
    void* room = m_arena.allocate(sizeof(T), alignof(T));
    if constexpr (std::is_base_of_v<AParent, T>) {
        m_containers.push_back(nullptr);
        T* object = new (room) T(classInfo);
        m_containers.back() = object;
        return object;
    } else {
        return new (room) T(classInfo);
    }
}

AObject* ADocument::createObject(const AClassInfo& classInfo, std::string_view name) {
    static const AClassInfo& maskClass = *findClass(_T("AMask"));
    AObject* object = nullptr;
    m_objects.reserve(m_objects.size() + 1 > m_objects.capacity() ? 2 * m_objects.size() + 16 : 0);
    switch (classInfo.kind) {
        case AClassKind::leaf:
            object = place<AObject>(classInfo);
            break;
        case AClassKind::bitmap:
            object = place<ABitmap>(classInfo);
            break;
        case AClassKind::group:
            object = &classInfo == &maskClass ? place<AMask>(classInfo) : place<AGroup>(classInfo);
            break;
        case AClassKind::composite:
            object = place<AComposite>(classInfo);
            break;
        case AClassKind::effect:
            object = place<AEffect>(classInfo);
            break;
        default:
            throw std::invalid_argument("not a class of drawing objects");
    }
    const std::uint32_t number = m_names.add(name);
    if (number == 0) throw std::invalid_argument("the name is empty or taken");
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
