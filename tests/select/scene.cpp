#include "scene.h"

#include <algorithm>

namespace test {

RandomScene::RandomScene(unsigned seed, unsigned count) : m_random(seed) {
    makePaint();
    makeLayers();
    for (unsigned i = 0; i < count; ++i) makeObject();
    std::vector<AObject*> chosen;
    const unsigned rate = m_random() % 4;
    for (AObject* object : objects) {
        if (rate > 0 && m_random() % (2 * rate) == 0) chosen.push_back(object);
    }
    std::shuffle(chosen.begin(), chosen.end(), m_random);
    select(chosen);
}

// What a document shares, and beside it items that are equal, or only share a name.
void RandomScene::makePaint() {
    APaintTable& paint = document.getPaint();
    const auto keep = [this](auto* item) {
        m_items.emplace_back(item);
        return item;
    };
    const auto brushOf = [this](ABrushItem* item) {
        m_ownBrushes.push_back(std::make_unique<ABrush>(item));
        m_brushes.push_back(m_ownBrushes.back().get());
    };
    const auto penOf = [this](APenItem* item) {
        m_ownPens.push_back(std::make_unique<APen>(item));
        m_pens.push_back(m_ownPens.back().get());
    };
    std::vector<AColorItem*> colors{
        paint.rgb(0xff0000),
        paint.rgb(0x0000ff),
        paint.color(*findClass(_T("ASpotColorItem")), "red", {1, 0, 0, 0}, 0xff0000),
        paint.color(*findClass(_T("ACMYKColorItem")), "", {1, 0, 0, 0}, 0x00ffff),
        keep(makeColor(_T("red"), RGB(255, 0, 0)).release()),
        keep(makeColor(_T("red"), RGB(250, 0, 0)).release()),
        keep(makeColor(_T("red_1"), RGB(1, 0, 0)).release()),
        keep(makeColor(_T(""), RGB(2, 0, 0)).release()),
    };
    for (AColorItem* color : colors) {
        m_brushes.push_back(paint.solidBrush(color));
        m_pens.push_back(paint.pen(color));
        brushOf(keep(makeSolid(color).release()));
        penOf(keep(makePen(color, m_random() % 3 == 0 ? APenItem::kStyleNone : 0).release()));
    }
    ABrush* gradient = paint.gradientBrush("g");
    for (const char* name : {"g", "h", "red"}) m_brushes.push_back(paint.gradientBrush(name));
    m_brushes.push_back(paint.patternBrush("g"));
    brushOf(keep(makeGradient(_T("g")).release()));
    brushOf(keep(makeGradient(_T("")).release()));
    brushOf(nullptr);
    penOf(nullptr);
    penOf(keep(makePen(nullptr).release()));
    m_pens.push_back(paint.brushPen(gradient->getBrushItem()));
}

void RandomScene::makeLayers() {
    std::vector<const WCHAR*> classes{_T("ALayer"), _T("ALayer"), _T("AGuideLayer"), _T("AMasterLayer")};
    for (unsigned left = 2 + m_random() % 4; left > 0; --left) {
        ALayer* made = layer(one(classes), m_random() % 4 == 0);
        made->setLocked(m_random() % 5 == 0);
        made->setHidden(m_random() % 6 == 0);
        m_parents.push_back(made);
    }
}

void RandomScene::makeObject() {
    std::vector<const WCHAR*> classes{_T("ARectangle"), _T("AOval"),   _T("ABitmap"),    _T("ABitmap"),
                                      _T("ADimension"), _T("AGroup"),  _T("AComposite"), _T("AMask"),
                                      _T("AShadow"),    _T("AStripe"), _T("AText"),      _T("AEditPath")};
    AObject* object = add(one(m_parents), one(classes));
    objects.push_back(object);
    if (AParent* parent = object->asParent()) m_parents.push_back(parent);
    if (m_random() % 4 != 0) object->setBrush(one(m_brushes));
    if (m_random() % 4 != 0) object->setPen(one(m_pens));
    object->setObjectFlags(kObjectHidden, m_random() % 12 == 0);
    object->setObjectFlags(kObjectLocked, m_random() % 12 == 0);
    if (auto* bitmap = dynamic_cast<ABitmap*>(object))
        bitmap->setColorModel(static_cast<int>(m_random() % 8));
}

}  // namespace test
