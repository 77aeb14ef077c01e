#include "kzcore/tool/tool_runner.h"

#include <exception>
#include <new>

#include "kzcore/document/refer_item.h"
#include "kzcore/view/view.h"

AToolOutcome runTool(ATool& tool, AReferItem* item, std::string& error) {
    error.clear();
    try {
        if (!tool.isValid()) return AToolOutcome::notValid;
        ADocView* view = ADocView::GetActiveView();
        if (!view) return AToolOutcome::notValid;
        AHistory::Step step(view->getHistory());
        tool.m_endCount = 0;
        const int started = item ? tool.onToolStart(AFPoint(), item) : tool.onToolStart();
        step.end();
        if (started == 0) return AToolOutcome::refused;
        return tool.hasEnded() ? AToolOutcome::done : AToolOutcome::notEnded;
    } catch (const std::bad_alloc&) {
        error = "not enough memory";
    } catch (const std::exception& raised) {
        error = raised.what();
    } catch (...) {
        error = "it raised something that is no exception of the standard library";
    }
    return AToolOutcome::failed;
}
