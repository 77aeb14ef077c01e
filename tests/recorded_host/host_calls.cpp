#include "host_calls.h"

#include "kzcore/document/application.h"
#include "kzcore/tool/tool.h"
#include "kzcore/view/view.h"

namespace test {

std::vector<std::string>& hostCalls() {
    static std::vector<std::string> calls;
    return calls;
}

bool& hostRefusesTools() {
    static bool refuses = false;
    return refuses;
}

}  // namespace test

using test::hostCalls;

ADocView* ADocView::GetActiveView() {
    hostCalls().push_back("view");
    const AApplication* application = AApplication::GetApplication();
    return application ? application->getActiveView() : nullptr;
}

void ADocView::setViewFilter(AViewFilter* filter) {
    hostCalls().push_back(filter ? "filter" : "no filter");
    if (filter == m_viewFilter) return;
    delete m_viewFilter;
    m_viewFilter = filter;
}

void ASelection::resetSelection(int redraw) {
    hostCalls().push_back("reset " + std::to_string(redraw));
    for (AObject* object : m_objects) object->setObjectFlags(kObjectSelected, false);
    m_objects.clear();
}

void ASelection::addSelection(const AObList* objects, int toggle, int redraw) {
    hostCalls().push_back("add " + std::to_string(objects->GetCount()) + " " + std::to_string(toggle) + " " +
                          std::to_string(redraw));
    for (ARoot* object : *objects) select(static_cast<AObject*>(object));
}

int ATool::isValid() {
    const AApplication* application = AApplication::GetApplication();
    return !test::hostRefusesTools() && application && application->getActiveView();
}

void ATool::redrawView(int erase, AFRect* area) {
    hostCalls().push_back("redraw " + std::to_string(erase) + (area ? " area" : " all"));
}

void ATool::notifyEnd(ATool* next) {
    hostCalls().push_back(next ? "end with a next tool" : "end");
    ++m_endCount;
}

void ASelection::sortSelection(int redraw) {
    hostCalls().push_back("sort " + std::to_string(redraw));
}

int ATool::preChangeObject() {
    hostCalls().push_back("before change");
    return 1;
}

int ATool::postChangeObject(const AString* name, TRANS_FLAG, REPEAT_FLAG repeat) {
    hostCalls().push_back("after change " + std::to_string(static_cast<int>(repeat)) +
                          (name ? " named" : ""));
    return 1;
}
