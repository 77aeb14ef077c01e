// A view filter that hides colours and brushes by their names.
#pragma once

#include <set>
#include <string>

#include "kzcore/document/refer_item.h"
#include "kzcore/view/view_filter.h"

namespace svg_test {

class HideByName : public AViewFilter {
public:
    explicit HideByName(std::set<std::string> names) : m_names(std::move(names)) {}

    int isVisible(AReferItem* item) override {
        if (const auto* solid = dynamic_cast<const ASolidBrushItem*>(item)) item = solid->getColorItem();
        if (const auto* pen = dynamic_cast<const APenItem*>(item)) item = pen->getColorItem();
        return item == nullptr || !m_names.contains(item->getName().toUtf8());
    }

private:
    std::set<std::string> m_names;
};

}  // namespace svg_test
