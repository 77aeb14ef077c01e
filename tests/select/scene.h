// Drawings for the tests of Select by Attributes: made by hand, or at random.
#pragma once

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "checkpage/check_page_base.h"
#include "conditions/support.h"
#include "kzcore/document/application.h"
#include "kzcore/document/document.h"
#include "kzcore/view/view.h"

namespace test {

// A running application with one open drawing.
struct Scene {
    AApplication application;
    ADocument document;
    ADocView view{document};

    Scene() { application.setActiveView(&view); }
    ~Scene() { application.setActiveView(nullptr); }

    ALayer* layer(const WCHAR* className = _T("ALayer"), bool master = false) {
        return document.createLayer(master ? *document.getSecondaryDatabase() : document.getDatabase(),
                                    *findClass(className), _T("Layer"));
    }
    // A new object of the class, named "object-1" and so on unless it has a name.
    AObject* add(AParent* parent, const WCHAR* className, std::string name = {}) {
        if (name.empty()) name = "object-" + std::to_string(document.getObjectCount() + 1);
        AObject* object = document.createObject(*findClass(className), name);
        parent->appendChild(object);
        return object;
    }
    AParent* addParent(AParent* parent, const WCHAR* className, std::string name = {}) {
        return add(parent, className, std::move(name))->asParent();
    }
    AObject* filled(AParent* parent, const WCHAR* className, std::uint32_t color, std::string name = {}) {
        AObject* object = add(parent, className, std::move(name));
        object->setBrush(document.getPaint().rgbBrush(color));
        return object;
    }
    void select(const std::vector<AObject*>& objects) {
        AObList list(0, 10);
        for (AObject* object : objects) list.AddTail(object);
        view.m_selection->resetSelection(0);
        view.m_selection->addSelection(&list, 0, 0);
    }
    Names selected() const {
        Names names;
        for (const AObject* object : view.m_selection->getObjects())
            names.push_back(std::string(object->getNameUtf8()));
        return names;
    }
};

// A page without a tree.
class AnyPage final : public ACheckPageBase {
public:
    ACheckTree* getTree() override { return nullptr; }
    using ACheckPageBase::findCondition;
};

// Layers of all classes and both databases, nested containers of every kind, every way to be painted or not,
// hidden and locked things, and a selection.
class RandomScene : public Scene {
public:
    explicit RandomScene(unsigned seed, unsigned objects = 60);

    std::vector<AObject*> objects;

private:
    template <class T>
    T& one(std::vector<T>& of) {
        return of[m_random() % of.size()];
    }
    void makePaint();
    void makeLayers();
    void makeObject();

    std::mt19937 m_random;
    std::vector<ABrush*> m_brushes;
    std::vector<APen*> m_pens;
    std::vector<AParent*> m_parents;
    std::vector<Held<AReferItem>> m_items;
    std::vector<std::unique_ptr<ABrush>> m_ownBrushes;
    std::vector<std::unique_ptr<APen>> m_ownPens;
};

}  // namespace test
