// Select by Attributes as loops over everything: what is gathered, how the pages are filled, what a selection
// by conditions holds. The oracle for small drawings.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "conditions/condition.h"
#include "kzcore/view/view.h"

namespace plain {

struct Gathered {
    std::vector<AObject*> candidates, selected;
    std::vector<ALayer*> pool, selectedLayers;
};
Gathered gather(const ADocView& view);

struct Page {
    AString category;
    std::vector<std::unique_ptr<ACondition>> conditions;

    void add(std::unique_ptr<ACondition> added);
    bool take(ARoot* item, bool selected);
};
using Pages = std::vector<std::unique_ptr<Page>>;

Pages createPages();
void fillPages(Pages& pages, const Gathered& gathered);

// The candidates, in order, that satisfy one condition of each kind that has any; without those that another
// one of them contains.
std::vector<AObject*> match(const std::vector<ACondition*>& conditions, std::vector<AObject*> candidates);

}  // namespace plain
