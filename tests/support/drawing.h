// Builds drawings for tests.
#pragma once

#include <memory>
#include <string>

#include "kzcore/document/application.h"
#include "kzcore/document/document.h"
#include "kzcore/view/view.h"

namespace test {

// An application with one open document and its view active.
struct Drawing {
    AApplication application;
    ADocument document;
    ADocView ownView{document};

    Drawing() { application.setActiveView(&ownView); }
    ~Drawing() { application.setActiveView(nullptr); }
    Drawing(const Drawing&) = delete;
    Drawing& operator=(const Drawing&) = delete;

    ADocView& view() { return ownView; }
    ASelection& selection() { return *ownView.m_selection; }

    ALayer* layer(const WCHAR* title = _T("Layer")) {
        return document.createLayer(document.getDatabase(), *findClass(_T("ALayer")), title);
    }
    ALayer* masterLayer(const WCHAR* title = _T("Master")) {
        return document.createLayer(*document.getSecondaryDatabase(), *findClass(_T("AMasterLayer")), title);
    }
    // A new object at the end of a container; its name is made.
    AObject* add(AParent* parent, const WCHAR* className) {
        const std::string name = "object-" + std::to_string(document.getObjectCount() + 1);
        AObject* object = document.createObject(*findClass(className), name);
        parent->appendChild(object);
        return object;
    }
    AParent* addParent(AParent* parent, const WCHAR* className) { return add(parent, className)->asParent(); }
    void select(std::initializer_list<AObject*> objects) {
        selection().resetSelection(0);
        for (AObject* object : objects) selection().addSelection(object);
    }
    const std::vector<AObject*>& selected() { return selection().getObjects(); }
};

}  // namespace test
