#include "support.h"

#include "formats/svg/reader.h"

namespace svg_test {

namespace {

std::string colorText(const AColorItem& color) {
    const std::string name = color.getName().toUtf8();
    const std::string className = color.getClassName().toUtf8();
    if (className == "ARGBColorItem") return name;
    return className.substr(1, className.find("ColorItem") - 1) + ' ' + name;
}

std::string brushText(const ABrushItem* item) {
    if (item == nullptr) return "none";
    if (const auto* solid = dynamic_cast<const ASolidBrushItem*>(item))
        return colorText(*solid->getColorItem());
    const bool gradient = dynamic_cast<const AGradientBrushItem*>(item) != nullptr;
    return (gradient ? "gradient " : "pattern ") + item->getName().toUtf8();
}

std::string fillText(const AObject& object) {
    return object.getBrush() ? brushText(object.getBrush()->getBrushItem()) : "none";
}

std::string strokeText(const AObject& object) {
    const APen* pen = object.getPen();
    if (pen == nullptr) return "none";
    const APenItem* item = pen->getPenItem();
    return item->getColorItem() ? colorText(*item->getColorItem()) : brushText(item->getBrushItem());
}

void describeChildren(const AParent& parent, const std::string& indent, std::string& out) {
    for (ARoot* entry : parent.children) {
        const auto* object = static_cast<const AObject*>(entry);
        if (const auto* layer = dynamic_cast<const ALayer*>(object)) {
            out += indent + layer->getClassName().toUtf8() + " '" + layer->getTitle().toUtf8() + '\'';
            if (layer->isLocked()) out += " locked";
            if (layer->isHidden()) out += " hidden";
        } else {
            out += indent + describe(*object);
        }
        out += '\n';
        if (const auto* container = dynamic_cast<const AParent*>(object)) {
            describeChildren(*container, indent + "  ", out);
        }
    }
}

const AObject& find(ADocument& document, const std::string& name) {
    const AObject* object = document.findObject(name);
    if (object == nullptr) throw std::runtime_error("no object " + name);
    return *object;
}

}  // namespace

std::string drawing(const std::string& body) {
    return "<svg xmlns='http://www.w3.org/2000/svg' xmlns:xlink='http://www.w3.org/1999/xlink'"
           " xmlns:inkscape='http://www.inkscape.org/namespaces/inkscape'"
           " xmlns:sodipodi='http://sodipodi.sourceforge.net/DTD/sodipodi-0.dtd'"
           " xmlns:kz='urn:kzdraw:drawing' width='200' height='100'>\n" +
           body + "\n</svg>\n";
}

std::unique_ptr<ADocument> readText(const std::string& text) {
    std::string error;
    auto document = svg::readDrawingBytes(text, "test.svg", error);
    EXPECT_TRUE(document) << error;
    EXPECT_EQ(error, "");
    return document ? std::move(document) : std::make_unique<ADocument>();
}

std::unique_ptr<ADocument> readBody(const std::string& body) {
    return readText(drawing(body));
}

std::string errorOf(const std::string& text) {
    std::string error;
    const auto document = svg::readDrawingBytes(text, "test.svg", error);
    EXPECT_EQ(document == nullptr, !error.empty());
    return error;
}

std::string describe(const AObject& object) {
    std::string text = object.getClassName().toUtf8() + ' ' + std::string(object.getNameUtf8());
    if (dynamic_cast<const AParent*>(&object) == nullptr &&
        dynamic_cast<const ABitmap*>(&object) == nullptr) {
        text += " fill=" + fillText(object) + " stroke=" + strokeText(object);
    }
    if (object.getObjectFlags(kObjectHidden)) text += " hidden";
    if (object.isUnselectable()) text += " locked";
    return text;
}

std::string describe(ADocument& document) {
    std::string out;
    describeChildren(document.getDatabase(), "", out);
    if (!document.getSecondaryDatabase()->children.IsEmpty()) {
        out += "master:\n";
        describeChildren(*document.getSecondaryDatabase(), "", out);
    }
    return out;
}

std::string tree(const std::string& body) {
    const auto document = readBody(body);
    return describe(*document);
}

std::string fillOf(ADocument& document, const std::string& name) {
    return fillText(find(document, name));
}
std::string strokeOf(ADocument& document, const std::string& name) {
    return strokeText(find(document, name));
}

std::string fillOf(const std::string& body) {
    const auto document = readBody(body);
    return fillOf(*document, "a");
}

AFRect boundsOf(ADocument& document, const std::string& name) {
    AFRect bounds;
    find(document, name).getBoundingRect(bounds);
    return bounds;
}

void expectBounds(const AFRect& actual, const AFRect& expected, double tolerance) {
    EXPECT_NEAR(actual.left, expected.left, tolerance);
    EXPECT_NEAR(actual.top, expected.top, tolerance);
    EXPECT_NEAR(actual.right, expected.right, tolerance);
    EXPECT_NEAR(actual.bottom, expected.bottom, tolerance);
}

}  // namespace svg_test
