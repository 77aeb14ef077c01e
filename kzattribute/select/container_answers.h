// Answers about containers, where a container that does not decide gives the answer of the one around it.
//
//     ContainerAnswers answers;
//     bool inShadow = answers.ask(object.getParent(), [&](AParent& container) -> std::optional<bool> { … });
//
// Each container is asked once, so that a walk over a deep drawing stays linear.
#pragma once

#include <optional>
#include <vector>

#include "kzcore/document/object.h"
#include "select/pointer_table.h"

class ContainerAnswers {
public:
    // False at the top. `decide` has to decide the same every time.
    template <class Decide>
    bool ask(AParent* container, Decide decide) {
        if (container == m_last) return m_lastAnswer;
        bool answer = false;
        m_path.clear();
        for (AParent* at = container; at; at = at->getParent()) {
            if (const bool* known = m_answers.find(at)) {
                answer = *known;
                break;
            }
            m_path.push_back(at);
            if (const std::optional<bool> decided = decide(*at)) {
                answer = *decided;
                break;
            }
        }
        for (const AParent* at : m_path) m_answers[at] = answer;
        m_last = container;
        m_lastAnswer = answer;
        return answer;
    }

private:
    PointerTable<bool> m_answers;
    std::vector<AParent*> m_path;
    AParent* m_last = nullptr;
    bool m_lastAnswer = false;
};
