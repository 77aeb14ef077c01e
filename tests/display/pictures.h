// Drawings drawn from their display lists, and directly.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <string>

#include "canvas/image.h"
#include "kzcore/display/display_drawing.h"
#include "kzcore/document/document.h"
#include "kzcore/document/refer_item.h"
#include "kzcore/view/view.h"
#include "svg/random_drawing.h"
#include "svg/support.h"

namespace display_test {

// Refuses what is painted with the colours of these names.
class RefusingFilter : public AViewFilter {
public:
    explicit RefusingFilter(std::set<std::string> refused) : m_refused(std::move(refused)) {}
    int isVisible(AReferItem* item) override;

private:
    std::set<std::string> m_refused;
};

// A drawing with a view and its display list.
struct Shown {
    static constexpr int kWidth = 200, kHeight = 100;

    // Takes over the filter.
    explicit Shown(const std::string& text, AViewFilter* filter = nullptr);

    // 200 by 100 pixels on white.
    AImage drawnDirectly(const AAffine& toPixels) const;
    AImage drawnFromList(const AAffine& toPixels) const;

    std::unique_ptr<ADocument> document;
    std::unique_ptr<ADocView> view;
    std::shared_ptr<const ADisplayList> list;
    AShownPaint shown;
};

// Those whose channels differ by more than that.
std::size_t differentPixels(const AImage& a, const AImage& b, int difference);

}  // namespace display_test
