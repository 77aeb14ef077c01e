#include "kzcore/tool/tool_runner.h"

#include <exception>

#include "kzcore/document/refer_item.h"
#include "kzcore/view/view.h"

AToolOutcome runTool(ATool& tool, AReferItem* item, std::string& error) {
    error.clear();
    ADocView* view = nullptr;
    try {
        if (!tool.isValid()) return AToolOutcome::notValid;
        view = ADocView::GetActiveView();
        if (!view) return AToolOutcome::notValid;
        view->getHistory().begin();
    } catch (const std::exception& raised) {
        error = raised.what();
        return AToolOutcome::failed;
    }
    int started = 0;
    tool.m_endCount = 0;
    try {
        started = item ? tool.onToolStart(AFPoint(), item) : tool.onToolStart();
        view->getHistory().end();
    } catch (const std::exception& raised) {
        error = raised.what();
        view->getHistory().cancel();
        return AToolOutcome::failed;
    }
    if (started == 0) return AToolOutcome::refused;
    return tool.hasEnded() ? AToolOutcome::done : AToolOutcome::notEnded;
}
