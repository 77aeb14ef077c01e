// Names, items and conditions for the tests of conditions.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "conditions/condition.h"
#include "kzcore/document/refer_item.h"

namespace test {

using Names = std::vector<std::string>;

inline Names namesOf(const ACondition& condition) {
    Names names;
    for (const AString& name : condition.getClassNames()) names.push_back(name.toUtf8());
    return names;
}

// A plain condition, or another kind that has the constructor, of several classes.
template <class Kind = ACondition>
std::unique_ptr<Kind> ofClasses(const Names& names) {
    auto condition = std::make_unique<Kind>(AString(), static_cast<const WCHAR*>(nullptr));
    for (const std::string& name : names) condition->merge(ACondition(AString(), AString::fromUtf8(name)));
    return condition;
}

// Lets the next condition have a serial that is so much higher; at the end it is as if that had never been.
class LaterSerials {
public:
    explicit LaterSerials(std::uint64_t count) : m_count(count) { ACondition::consumeSerials(count); }
    ~LaterSerials() { ACondition::consumeSerials(0 - m_count); }
    LaterSerials(const LaterSerials&) = delete;
    LaterSerials& operator=(const LaterSerials&) = delete;

private:
    std::uint64_t m_count;
};
constexpr std::uint64_t kBeyond32Bits = std::uint64_t{1} << 32;

inline std::unique_ptr<ACondition> cloneOf(const ACondition& condition) {
    return std::unique_ptr<ACondition>(condition.clone());
}

// Releases the reference that its maker has.
struct Release {
    void operator()(AReferItem* item) const { item->releaseReference(); }
};
template <class Item>
using Held = std::unique_ptr<Item, Release>;

inline Held<AColorItem> makeColor(const WCHAR* name, COLORREF display,
                                  const WCHAR* colorClass = _T("ARGBColorItem")) {
    const AColorItem::Components components{static_cast<float>(display & 0xff) / 255,
                                            static_cast<float>(display >> 8 & 0xff) / 255,
                                            static_cast<float>(display >> 16 & 0xff) / 255, 0};
    return Held<AColorItem>(new AColorItem(*findClass(colorClass), name, components, display));
}
inline Held<ASolidBrushItem> makeSolid(AColorItem* color) {
    return Held<ASolidBrushItem>(new ASolidBrushItem(color));
}
inline Held<AGradientBrushItem> makeGradient(const WCHAR* name) {
    return Held<AGradientBrushItem>(new AGradientBrushItem(name));
}
inline Held<APenItem> makePen(AColorItem* color, int style = APenItem::kStyleSolid) {
    return Held<APenItem>(new APenItem(style, color, nullptr));
}

// Something of the host's that is neither an object nor an item.
class Foreign : public ARoot {
public:
    explicit Foreign(const WCHAR* className) : m_name(className) {}
    const AString& getClassName() const override { return m_name; }

private:
    AString m_name;
};

}  // namespace test
