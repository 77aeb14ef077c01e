#include "kzcore/tool/tool.h"

#include "kzcore/view/view.h"

// The defaults of a tool that reacts to nothing: every query answers "no", every event is not handled.

int ATool::isDiscarded() const {
    return 0;
}

int ATool::preChangeObject() {
    ADocView* view = ADocView::GetActiveView();
    if (!view) return 0;
    view->getHistory().begin();
    return 1;
}

int ATool::postChangeObject(unsigned int, REPEAT_FLAG repeat) {
    return postChangeObject(nullptr, TRANS_FLAG{}, repeat);
}

int ATool::postChangeObject(const AString*, TRANS_FLAG, REPEAT_FLAG) {
    ADocView* view = ADocView::GetActiveView();
    if (!view) return 0;
    view->getHistory().end();
    return 1;
}

void ATool::drawHandles(ADevice*) {}

AFRect ATool::getHandleRect() const {
    return {};
}

int ATool::isValid() {
    return ADocView::GetActiveView() != nullptr;
}

int ATool::doAction(unsigned int, void*) {
    return 0;
}

int ATool::onUpdateCmdUI(ACmdUI*, const AFPoint&) {
    return 0;
}

int ATool::onUpdateCmdUI(ACmdUI*) {
    return 0;
}

int ATool::onToolStart(const AFPoint&, void*) {
    return 0;
}

int ATool::onToolStart() {
    return 0;
}

int ATool::onToolEnd() {
    return 0;
}

int ATool::onToolSuspend() {
    return 0;
}

int ATool::onToolResume() {
    return 0;
}

int ATool::onToolAbort() {
    return 0;
}

int ATool::onRepeatLast() {
    return 0;
}

int ATool::onSelectionChange() {
    return 0;
}

int ATool::onButtonDown(const AFPoint&, UINT) {
    return 0;
}

int ATool::onButtonDblClk(const AFPoint&, UINT) {
    return 0;
}

int ATool::onButtonTriClk(const AFPoint&, UINT) {
    return 0;
}

int ATool::onButtonUp(const AFPoint&, UINT) {
    return 0;
}

int ATool::onMouseMove(const AFPoint&, UINT) {
    return 0;
}

int ATool::onToolDblClk() {
    return 0;
}

int ATool::canHandleDrag(ADataObject*) {
    return 0;
}

int ATool::onDragOver(ADataObject*, const AFPoint&) {
    return 0;
}

int ATool::onDrop(ADataObject*, const AFPoint&) {
    return 0;
}

int ATool::onChar(UINT) {
    return 0;
}

int ATool::onKey(UINT, UINT) {
    return 0;
}

int ATool::onTimer(UINT_PTR) {
    return 0;
}

int ATool::onLocalCommand(UINT) {
    return 0;
}

UINT ATool::getCursorID(const AFPoint&) {
    return 0;
}

AMenu* ATool::createContextualMenu(const AFPoint&) {
    return nullptr;
}

ADialogPage* ATool::getPage(int) {
    return nullptr;
}

int ATool::getPageCount() const {
    return 0;
}

int ATool::getInitialPageIndex() const {
    return 0;
}

AString ATool::getHandleTip(int) const {
    return {};
}

int ATool::hitTest(const AFPoint&) {
    return 0;
}

int ATool::hitTestHandle(const AFPoint&) {
    return 0;
}

int ATool::updateHandleTarget(const AFPoint&) {
    return 0;
}

void ATool::onFWDrawBackGround(ADevice*) {}

void ATool::onFWDrawHandles(ADevice*) {}

int ATool::onFWToolStart(const AFPoint&, void*) {
    return 0;
}

int ATool::onFWToolStart() {
    return 0;
}

int ATool::onFWToolEnd() {
    return 0;
}

int ATool::onFWToolSuspend() {
    return 0;
}

int ATool::onFWToolResume() {
    return 0;
}

int ATool::onFWToolAbort() {
    return 0;
}

int ATool::onFWSelectionChange() {
    return 0;
}

int ATool::onFWButtonDown(const AFPoint&, UINT) {
    return 0;
}

int ATool::onFWButtonDblClk(const AFPoint&, UINT) {
    return 0;
}

int ATool::onFWButtonTriClk(const AFPoint&, UINT) {
    return 0;
}

int ATool::onFWButtonUp(const AFPoint&, UINT) {
    return 0;
}

int ATool::onFWMouseMove(const AFPoint&, UINT) {
    return 0;
}

int ATool::onFWToolDblClk() {
    return 0;
}

int ATool::onFWDragOver(ADataObject*, const AFPoint&) {
    return 0;
}

int ATool::onFWDrop(ADataObject*, const AFPoint&) {
    return 0;
}

int ATool::onFWChar(UINT) {
    return 0;
}

int ATool::onFWKey(UINT, UINT) {
    return 0;
}

int ATool::onFWTimer(UINT_PTR) {
    return 0;
}

int ATool::onFWLocalCommand(UINT) {
    return 0;
}

AString ATool::getExceptionContextMessage() const {
    return {};
}

APreferenceDialog* ATool::CreatePreferenceDialog() {
    return nullptr;
}

int ATool::listenMessage(UINT, void*) {
    return 0;
}

void ATool::redrawView(int, AFRect* area) {
    if (ADocView* view = ADocView::GetActiveView()) view->invalidate(area);
}

void ATool::notifyEnd(ATool*) {
    ++m_endCount;
}
