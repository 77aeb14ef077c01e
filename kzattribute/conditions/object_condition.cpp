#include "conditions/object_condition.h"

#include "kzcore/document/application.h"

namespace {

AItemPath subKindPath(const WCHAR* className, UINT subKindId) {
    AItemPath path;
    if (AApplication* application = AApplication::GetApplication())
        path.LoadStringW(application->getConfig().getClassNameID(className, 1));
    path.removeFirstSegment();
    AString subKind;
    subKind.LoadStringW(subKindId);
    path.appendSegment(subKind);
    return path;
}

}  // namespace

void AObjectCondition::reset(const WCHAR* className, UINT subKindId, Classifier subKindOf) {
    reset(subKindPath(className, subKindId), className);
    classifier = subKindOf;
    expectedId = subKindId;
}

BOOL AObjectCondition::isMatch(ARoot* item) const {
    if (!item || !hasClass(item->getClassName())) return FALSE;
    return !classifier || classifier(item) == expectedId;
}

// The icon step twice: it changes nothing that shows.
HTREEITEM AObjectCondition::addToTree(ACheckTree& tree) const {
    HTREEITEM item = ACondition::addToTree(tree);
    if (item) setClassIcon(tree, item);
    return item;
}
