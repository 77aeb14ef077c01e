// Extraction of the module's classes from the host's archives. A host that does not know the
// class reads null.
#include "kzutil/archive.h"
#include "select/select_by_attr_tool.h"
#include "select/select_color_tool.h"
#include "select/select_similar_tool.h"
#include "viewfilter/color_tools.h"
#include "viewfilter/view_filter_prefs.h"
#include "viewfilter/view_filter_tool.h"

namespace {

// The object is stored as the archive gives it, without a test of its type: the archive's own
// class name decided what it is, and a caller that asked for another class gets that object all the same.
template <class Class>
AArchive& extract(AArchive& archive, Class*& object) {
    object = reinterpret_cast<Class*>(archive.orbiReadObject());
    return archive;
}

}  // namespace

KZ_EXPORT AArchive& operator>>(AArchive& archive, AHideAllExceptTool*& object) {
    return extract(archive, object);
}
KZ_EXPORT AArchive& operator>>(AArchive& archive, AHideThisTool*& object) {
    return extract(archive, object);
}
KZ_EXPORT AArchive& operator>>(AArchive& archive, ASelectByAttrTool*& object) {
    return extract(archive, object);
}
KZ_EXPORT AArchive& operator>>(AArchive& archive, ASelectColorTool*& object) {
    return extract(archive, object);
}
KZ_EXPORT AArchive& operator>>(AArchive& archive, ASelectSimilarTool*& object) {
    return extract(archive, object);
}
KZ_EXPORT AArchive& operator>>(AArchive& archive, AShowAllExceptTool*& object) {
    return extract(archive, object);
}
KZ_EXPORT AArchive& operator>>(AArchive& archive, AShowAllTool*& object) {
    return extract(archive, object);
}
KZ_EXPORT AArchive& operator>>(AArchive& archive, AShowThisTool*& object) {
    return extract(archive, object);
}
KZ_EXPORT AArchive& operator>>(AArchive& archive, AViewFilterPrefs*& object) {
    return extract(archive, object);
}
KZ_EXPORT AArchive& operator>>(AArchive& archive, AViewFilterTool*& object) {
    return extract(archive, object);
}
