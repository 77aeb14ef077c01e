// Messages to the user.
#pragma once

#include <vector>

#include "kzutil/astring.h"

// A flag of a message that only informs.
inline constexpr UINT kMessageInforms = 0x80000000;

// Shows the text of a string id ("#" and the id where no module has it). `flags` are the host's. Returns the
// button's id, 1 (OK) where there is no screen. A message that cannot be shown is kept instead.
int KzMessageBox(UINT textId, UINT flags);

// The messages kept since the last call, oldest first.
std::vector<AString> takeKeptMessages();

// Shows messages on a screen instead of keeping them. Null: keep them again.
using AMessagePresenter = int (*)(const AString& text, UINT flags);
void setMessagePresenter(AMessagePresenter presenter);
