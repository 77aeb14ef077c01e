#include "kzcore/document/object.h"

namespace {

const AClassInfo& databaseClass() {
    static const AClassInfo row{_T("ADatabase"), 0, 0, AClassKind::database};
    return row;
}

}  // namespace

ADatabase::ADatabase(ADocument& document) : AParent(databaseClass()), m_document(document) {}

int ADatabase::isEmpty() const {
    for (ARoot* layer : children) {
        if (!static_cast<ALayer*>(layer)->children.IsEmpty()) return 0;
    }
    return 1;
}

void ADatabase::getAllObjects(AObList& objects, unsigned int) const {
    struct Level {
        const AParent* parent;
        int next;
    };
    std::vector<Level> path;
    for (ARoot* layer : children) {
        path.push_back({static_cast<const ALayer*>(layer), 0});
        while (!path.empty()) {
            Level& level = path.back();
            if (level.next == level.parent->children.GetCount()) {
                path.pop_back();
                continue;
            }
            auto* object = static_cast<AObject*>(level.parent->children.begin()[level.next++]);
            objects.AddTail(object);
            if (const AParent* parent = object->asParent()) path.push_back({parent, 0});
        }
    }
}
