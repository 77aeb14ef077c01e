// Declarations of style attributes and of rules, in the order of the cascade.
#pragma once

#include <string_view>
#include <vector>

#include "formats/svg/style/properties.h"

namespace svg {

struct Declaration {
    Property property = kUnknownProperty;  // or kVariable
    std::string_view name{};               // of a variable
    bool important = false;
    std::string_view value{};
    // What `value` says, where that was read in advance; null: it was not.
    PaintMember paintMember = nullptr;
    Paint paint{};
};
// False for an invalid value.
bool applyDeclaration(Style& style, const Reading& reading, const Declaration& declaration);
// Reads the paint of a declaration that will be applied many times, where that can be done in advance.
void prepare(Declaration& declaration);

// Takes the next declaration of a known or custom property from a style attribute or a rule's body; false at the end.
bool takeDeclaration(std::string_view& text, Declaration& declaration, Vocabulary vocabulary);

// The cascade of one element: what the sheet says (StyleSheet::collect), then its style attribute; important
// ones last. Calls apply(const Declaration&) in that order.
template <class Apply>
void cascade(const std::vector<const Declaration*>& sheet, std::string_view own, Vocabulary vocabulary,
             Apply apply) {
    bool important = false;
    for (const Declaration* one : sheet) {
        important |= one->important;
        if (!one->important) apply(*one);
    }
    bool ownImportant = false;
    if (!own.empty()) {
        Declaration declaration;
        for (std::string_view text = own; takeDeclaration(text, declaration, vocabulary);) {
            ownImportant |= declaration.important;
            if (!declaration.important) apply(declaration);
        }
    }
    if (important) {
        for (const Declaration* one : sheet) {
            if (one->important) apply(*one);
        }
    }
    if (ownImportant) {
        Declaration declaration;
        for (std::string_view text = own; takeDeclaration(text, declaration, vocabulary);) {
            if (declaration.important) apply(declaration);
        }
    }
}

}  // namespace svg
