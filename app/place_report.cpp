#include "app/place_report.h"

#include <algorithm>
#include <unordered_set>

#include "app/output.h"
#include "app/report.h"
#include "kzcore/display/hits.h"
#include "kzcore/view/view.h"
#include "kzutil/rect_math.h"

namespace app {

namespace {

using Json = nlohmann::ordered_json;

constexpr std::size_t kMostBoxes = 5000;
// A hit is drawn on pixels: so many for the tolerance, or for a unit where there is none.
constexpr double kPixelsOfTolerance = 4;
constexpr double kPixelsOfUnit = 16;
// A rectangle is drawn so large.
constexpr double kPixelsOfSide = 256;

template <class Object>
Object& outermostClosed(Object& object) {
    Object* found = &object;
    for (AParent* parent = object.getParent(); parent; parent = parent->getParent()) {
        if (parent->hasOption(kOptionClosed) != 0) found = parent;
    }
    return *found;
}

Json namesOf(const std::vector<const AObject*>& hits) {
    Json names = Json::array();
    std::unordered_set<const AObject*> told;
    for (const AObject* hit : hits) {
        const AObject& object = outermostClosed(*hit);
        if (canBeSelected(object) && told.insert(&object).second) names.push_back(object.getNameUtf8());
    }
    return names;
}

template <class Ask>
Json namesWithin(Session& session, const AFRect& area, Ask ask) {
    ShownDrawing& shown = session.shown();
    const double scale = kPixelsOfSide / std::max(area.Width(), area.Height());
    const AAffine toPixels = AAffine::scaling(scale);
    AHits hits(*shown.list(), *shown.paint(), toPixels);
    return namesOf(
        ask(hits, AFRect{area.left * scale, area.top * scale, area.right * scale, area.bottom * scale}));
}

Json boxOf(const AFRect& rect) {
    return {rect.left, rect.top, rect.Width(), rect.Height()};
}

}  // namespace

bool canBeSelected(const AObject& object) {
    const AObject* outer = &object;
    for (AParent* parent = object.getParent(); parent; parent = parent->getParent()) {
        if (outer->isUnselectable()) return false;
        if (const ALayer* layer = parent->asLayer()) return layer->IsLayerEditable() != 0;
        outer = parent;
    }
    return false;
}

std::vector<AObject*> selectableObjects(Session& session) {
    const AShownPaint& paint = *session.shown().paint();
    std::vector<AObject*> objects;
    std::unordered_set<const AObject*> taken;
    for (ARoot* entry : allObjects(session.document())) {
        auto* const object = static_cast<AObject*>(entry);
        const bool isOpen = object->asParent() && object->hasOption(kOptionClosed) == 0;
        if (isOpen || object->getObjectFlags(kObjectHidden) || !paint.shows(object->getIndex())) continue;
        AObject& outer = outermostClosed(*object);
        if (canBeSelected(outer) && taken.insert(&outer).second) objects.push_back(&outer);
    }
    return objects;
}

Json reportAt(Session& session, AFPoint point, double tolerance) {
    ShownDrawing& shown = session.shown();
    const double scale = tolerance > 0 ? kPixelsOfTolerance / tolerance : kPixelsOfUnit;
    const AAffine toPixels = AAffine::scaling(scale);
    AHits hits(*shown.list(), *shown.paint(), toPixels);
    return {{"at", namesOf(hits.allAt({point.x * scale, point.y * scale},
                                      tolerance > 0 ? kPixelsOfTolerance : 0))}};
}

Json reportInside(Session& session, const AFRect& area) {
    return {{"inside", namesWithin(session, area,
                                   [](AHits& hits, const AFRect& pixels) { return hits.inside(pixels); })}};
}

Json reportTouching(Session& session, const AFRect& area) {
    return {{"touching", namesWithin(session, area, [](AHits& hits, const AFRect& pixels) {
                 return hits.touching(pixels);
             })}};
}

Json reportExtents(Session& session) {
    const auto& selected = session.view().m_selection->getObjects();
    Json boxes = Json::array();
    AFRect all;
    for (std::size_t i = 0; i < selected.size(); ++i) {
        AFRect box;
        selected[i]->getBoundingRect(box);
        all = i == 0 ? box : unionOf(all, box);
        if (i < kMostBoxes) boxes.push_back(boxOf(box));
    }
    return {{"extents",
             {{"all", selected.empty() ? Json() : boxOf(all)},
              {"boxes", std::move(boxes)},
              {"more", selected.size() > kMostBoxes ? selected.size() - kMostBoxes : 0}}}};
}

}  // namespace app
