// The order of ATool's virtual table, which plug-ins built elsewhere rely on.
#include <gtest/gtest.h>

#include "kzcore/tool/tool.h"
#include "support/virtual_slots.h"

using test::slotOf;

namespace {

template <class Result, class... Arguments>
auto overload(Result (ATool::*member)(Arguments...)) {
    return member;
}

}  // namespace

TEST(ToolSlots, StandInTheStatedOrder) {
    // The destructor takes two slots, 1 and 2: one that destroys, one that destroys and deletes.
    const std::ptrdiff_t slots[] = {
        slotOf(&ATool::GetRuntimeClass),
        1,
        2,
        slotOf(&ATool::Serialize),
        slotOf(&ATool::AssertValid),
        slotOf(&ATool::Dump),
        slotOf(&ATool::getClassName),
        slotOf(&ATool::getDisplayNameID),
        slotOf(&ATool::getDisplayIconID),
        slotOf(&ATool::createInstance),
        slotOf(&ATool::getVersion),
        slotOf(&ATool::deepCopy),
        slotOf(&ATool::orbiSerialize),
        slotOf(&ATool::convertToOutline),
        slotOf(&ATool::shouldConvertToOutline),
        slotOf(&ATool::isDiscarded),
        slotOf(&ATool::preChangeObject),
        slotOf(overload<int, unsigned int, REPEAT_FLAG>(&ATool::postChangeObject)),
        slotOf(overload<int, const AString*, TRANS_FLAG, REPEAT_FLAG>(&ATool::postChangeObject)),
        slotOf(&ATool::drawHandles),
        slotOf(&ATool::getHandleRect),
        slotOf(&ATool::isValid),
        slotOf(&ATool::doAction),
        slotOf(overload<int, ACmdUI*, const AFPoint&>(&ATool::onUpdateCmdUI)),
        slotOf(overload<int, ACmdUI*>(&ATool::onUpdateCmdUI)),
        slotOf(overload<int, const AFPoint&, void*>(&ATool::onToolStart)),
        slotOf(overload<int>(&ATool::onToolStart)),
        slotOf(&ATool::onToolEnd),
        slotOf(&ATool::onToolSuspend),
        slotOf(&ATool::onToolResume),
        slotOf(&ATool::onToolAbort),
        slotOf(&ATool::onRepeatLast),
        slotOf(&ATool::onSelectionChange),
        slotOf(&ATool::onButtonDown),
        slotOf(&ATool::onButtonDblClk),
        slotOf(&ATool::onButtonTriClk),
        slotOf(&ATool::onButtonUp),
        slotOf(&ATool::onMouseMove),
        slotOf(&ATool::onToolDblClk),
        slotOf(&ATool::canHandleDrag),
        slotOf(&ATool::onDragOver),
        slotOf(&ATool::onDrop),
        slotOf(&ATool::onChar),
        slotOf(&ATool::onKey),
        slotOf(&ATool::onTimer),
        slotOf(&ATool::onLocalCommand),
        slotOf(&ATool::getCursorID),
        slotOf(&ATool::createContextualMenu),
        slotOf(&ATool::getPage),
        slotOf(&ATool::getPageCount),
        slotOf(&ATool::getInitialPageIndex),
        slotOf(&ATool::getHandleTip),
        slotOf(&ATool::hitTest),
        slotOf(&ATool::hitTestHandle),
        slotOf(&ATool::updateHandleTarget),
        slotOf(&ATool::onFWDrawBackGround),
        slotOf(&ATool::onFWDrawHandles),
        slotOf(overload<int, const AFPoint&, void*>(&ATool::onFWToolStart)),
        slotOf(overload<int>(&ATool::onFWToolStart)),
        slotOf(&ATool::onFWToolEnd),
        slotOf(&ATool::onFWToolSuspend),
        slotOf(&ATool::onFWToolResume),
        slotOf(&ATool::onFWToolAbort),
        slotOf(&ATool::onFWSelectionChange),
        slotOf(&ATool::onFWButtonDown),
        slotOf(&ATool::onFWButtonDblClk),
        slotOf(&ATool::onFWButtonTriClk),
        slotOf(&ATool::onFWButtonUp),
        slotOf(&ATool::onFWMouseMove),
        slotOf(&ATool::onFWToolDblClk),
        slotOf(&ATool::onFWDragOver),
        slotOf(&ATool::onFWDrop),
        slotOf(&ATool::onFWChar),
        slotOf(&ATool::onFWKey),
        slotOf(&ATool::onFWTimer),
        slotOf(&ATool::onFWLocalCommand),
        slotOf(&ATool::getExceptionContextMessage),
        slotOf(&ATool::CreatePreferenceDialog)};
    std::ptrdiff_t expected = 0;
    for (const std::ptrdiff_t slot : slots) EXPECT_EQ(slot, expected++);
    EXPECT_EQ(expected, 78);
}

TEST(ToolSlots, TheListenerIsASecondBaseWithOneOperation) {
    EXPECT_EQ(slotOf(&AListener::listenMessage), 0);
    ATool tool;
    const auto* root = static_cast<ARoot*>(&tool);
    const auto* listener = static_cast<AListener*>(&tool);
    EXPECT_NE(static_cast<const void*>(root), static_cast<const void*>(listener));
    EXPECT_EQ(static_cast<const void*>(root), static_cast<const void*>(&tool));
}
