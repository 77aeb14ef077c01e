// The check values of a tree item, and the state images that stand for them.
//
// value | meaning                          | state image, enabled | disabled | a click makes it
//     1 | unchecked                        |                    1 |        2 | checked
//     3 | checked                          |                    3 |        4 | unchecked
//     5 | partly: some descendants checked |                    5 |        6 | unchecked
//
// State image 0 is never used; 0 and everything from 7 on read as unchecked.
#pragma once

#include "platform/winapi.h"

namespace checktree {

constexpr int kUnchecked = 1;
constexpr int kChecked = 3;
constexpr int kPartly = 5;

constexpr UINT kStateMask = 0xF000;

// The check value that a state shows.
constexpr int checkOfState(UINT state) {
    const UINT index = (state & kStateMask) >> 12;
    return index == 3 || index == 4 ? kChecked : index == 5 || index == 6 ? kPartly : kUnchecked;
}

// The state that shows a check value. Even values stand for the odd one below them.
constexpr UINT stateOfCheck(int check, bool enabled) {
    const bool odd = check % 2 == 1;
    const int index = enabled ? (odd ? check : check - 1) : (odd ? check + 1 : check);
    return (static_cast<UINT>(index) << 12) & kStateMask;
}

}  // namespace checktree
