// Reads drawings from text and shows what became of them.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "kzcore/document/document.h"

namespace svg_test {

// The body, from line 2, inside a root element that declares the namespaces; the page is 200 by 100.
std::string drawing(const std::string& body);

// Reads a whole drawing; a failure fails the test.
std::unique_ptr<ADocument> readText(const std::string& text);
// The same of a body.
std::unique_ptr<ADocument> readBody(const std::string& body);
// The error that a text gives; "" when it is read.
std::string errorOf(const std::string& text);

// One line for an object: class, name, fill, stroke, flags: "ARectangle a fill=red stroke=none hidden".
std::string describe(const AObject& object);
// The whole document, a line each, indented: layers as "ALayer 'title' locked".
std::string describe(ADocument& document);
// The same of a body.
std::string tree(const std::string& body);

// "red" for a solid colour, "CMYK …", "Spot …" with the class in front for other colours, "gradient g",
// "pattern p", "none".
std::string fillOf(ADocument& document, const std::string& name);
std::string strokeOf(ADocument& document, const std::string& name);
// The fill of the object "a" of a body.
std::string fillOf(const std::string& body);

AFRect boundsOf(ADocument& document, const std::string& name);
void expectBounds(const AFRect& actual, const AFRect& expected, double tolerance = 1e-9);

}  // namespace svg_test
