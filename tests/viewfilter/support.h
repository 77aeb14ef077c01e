// Filters, told as text, and the plain rules that they follow.
#pragma once

#include <functional>
#include <string>

#include "conditions/refer_condition.h"
#include "conditions/support.h"
#include "viewfilter/view_attr_filter.h"

namespace test {

using Condition = std::unique_ptr<ACondition>;

inline Condition on(AReferItem* item) {
    return std::make_unique<AReferCondition>(AString(), item);
}
inline Condition onClass(const WCHAR* className) {
    return std::make_unique<AReferCondition>(AString(), className);
}

// "red,[ARGBColorItem],-": conditions on an item by its name, on classes in brackets, others as a dash.
inline std::string told(const AObArray& conditions) {
    std::string text;
    for (const ARoot* element : conditions) {
        if (!text.empty()) text += ',';
        const auto* refers = dynamic_cast<const AReferCondition*>(element);
        if (!refers)
            text += '-';
        else if (refers->getReferItem())
            text += refers->getReferItem()->getName().toUtf8();
        else
            for (const AString& name : refers->getClassNames()) text += '[' + name.toUtf8() + ']';
    }
    return text;
}

// "all shown", "none shown", "normal show: … hide: …", "negative show: … hide: …"; a filter of another class
// is "foreign", none is "none".
inline std::string told(const AViewFilter* filter) {
    if (!filter) return "none";
    const auto* ours = dynamic_cast<const AViewAttrFilter*>(filter);
    if (!ours) return "foreign";
    const std::string show = told(ours->getShowConditions());
    const std::string hide = told(ours->getHideConditions());
    if (ours->isUniform() && show.empty() && hide.empty())
        return ours->isNegative() ? "none shown" : "all shown";
    return std::string(ours->isUniform() ? "uniform " : "") + (ours->isNegative() ? "negative" : "normal") +
           " show: " + show + " hide: " + hide;
}

// The rule as it is told: plain loops, the item unwrapped before each question.
inline int plainlyVisible(const AViewAttrFilter& filter, AReferItem* item) {
    if (filter.isUniform()) return filter.isNegative() ? 0 : 1;
    if (!item) return 0;
    const auto matches = [&item](const ARoot* element) {
        if (auto* solid = dynamic_cast<ASolidBrushItem*>(item)) item = solid->getColorItem();
        if (auto* pen = dynamic_cast<APenItem*>(item)) item = pen->getColorItem();
        return item && dynamic_cast<const ACondition*>(element)->isMatch(item);
    };
    for (const ARoot* element : filter.getShowConditions()) {
        if (matches(element)) return filter.isNegative() ? 0 : 1;
    }
    for (const ARoot* element : filter.getHideConditions()) {
        if (matches(element)) return filter.isNegative() ? 1 : 0;
    }
    return filter.isNegative() ? 0 : 1;
}

// Red, green, blue and black; made without names, as a drawing's are.
struct Colors {
    Held<AColorItem> red = makeColor(_T(""), RGB(255, 0, 0));
    Held<AColorItem> green = makeColor(_T(""), RGB(0, 128, 0));
    Held<AColorItem> blue = makeColor(_T(""), RGB(0, 0, 255));
    Held<AColorItem> black = makeColor(_T(""), RGB(0, 0, 0));
};

// A condition of a kind that filters do not know: it matches every item of its classes but one, clones into
// itself, and is counted.
class AllBut : public ACondition {
public:
    AllBut(const WCHAR* className, const AReferItem* exception)
        : ACondition(AString(), className), m_exception(exception) {
        ++alive;
    }
    AllBut(const AllBut& source) : ACondition(source), m_exception(source.m_exception) { ++alive; }
    ~AllBut() override { --alive; }

    ACondition* clone() const override { return new AllBut(*this); }
    BOOL isMatch(ARoot* item) const override {
        return item && hasClass(item->getClassName()) && item != m_exception;
    }

    static inline int alive = 0;

private:
    const AReferItem* m_exception;
};

}  // namespace test
