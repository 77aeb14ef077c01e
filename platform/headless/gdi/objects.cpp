#include "platform/headless/gdi/objects.h"

#include <mutex>
#include <unordered_set>

namespace headless {

namespace {

struct Table {
    std::mutex mutex;
    std::unordered_set<std::uintptr_t> inverted;
};

// Never destroyed: objects of static lifetime may let go of their handles after everything else.
Table& table() {
    static Table& instance = *new Table;
    return instance;
}

std::uintptr_t invert(const void* handle) {
    return ~reinterpret_cast<std::uintptr_t>(handle);
}

bool isLive(const void* handle) {
    Table& live = table();
    std::lock_guard lock(live.mutex);
    return live.inverted.contains(invert(handle));
}

}  // namespace

void enterObject(const GdiObject* object) {
    Table& live = table();
    std::lock_guard lock(live.mutex);
    live.inverted.insert(invert(object));
}

void destroyObject(GdiObject* object) {
    {
        Table& live = table();
        std::lock_guard lock(live.mutex);
        live.inverted.erase(invert(object));
    }
    delete object;
}

GdiObject* findObject(const void* handle) {
    if (handle == nullptr || !isLive(handle)) return fails(ERROR_INVALID_HANDLE);
    return static_cast<GdiObject*>(const_cast<void*>(handle));
}

}  // namespace headless

using namespace headless;

BOOL DeleteObject(HGDIOBJ handle) {
    GdiObject* object = findObject(handle);
    if (object == nullptr || object->kind == GdiKind::imageList) return FALSE;
    if (object->permanent) return TRUE;
    if (object->kind == GdiKind::deviceContext) return DeleteDC(handleOf<HDC>(object));
    bool listed = object->kind == GdiKind::bitmap && static_cast<Bitmap*>(object)->ownedByList;
    if (listed || object->selections > 0) return FALSE;
    destroyObject(object);
    return TRUE;
}
