// Runs a tool as a host does: validity, one start operation, one step of history, refresh.
#pragma once

#include <string>

#include "kzcore/tool/tool.h"

class AReferItem;

enum class AToolOutcome {
    notValid,  // isValid said no; nothing happened
    done,      // started, and it notified its end
    refused,   // its start operation returned 0
    notEnded,  // started, but it did not notify its end
    failed,    // it raised; selection and filter are as before, `error` says why
};

// Starts the tool on the active view. With `item`, through the start operation that takes a point and data.
AToolOutcome runTool(ATool& tool, AReferItem* item, std::string& error);
