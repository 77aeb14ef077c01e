#include "kzutil/message_box.h"

#include <utility>

namespace {

constexpr int kOkButton = 1;

AMessagePresenter messagePresenter = nullptr;

std::vector<AString>& keptMessages() {
    static std::vector<AString> messages;
    return messages;
}

// A user can report a number; an empty box tells nobody anything.
AString textOf(UINT id) {
    AString text;
    if (!text.LoadStringW(id)) {
        text = _T("#");
        text.AppendNumber(id);
    }
    return text;
}

}  // namespace

int KzMessageBox(UINT textId, UINT flags) {
    AString text = textOf(textId);
    if (messagePresenter) return messagePresenter(text, flags);
    keptMessages().push_back(std::move(text));
    return kOkButton;
}

std::vector<AString> takeKeptMessages() {
    return std::exchange(keptMessages(), {});
}

void setMessagePresenter(AMessagePresenter presenter) {
    messagePresenter = presenter;
}
