// The sample drawings are read as they are meant.
#include <map>

#include "formats/svg/reader.h"
#include "support.h"

using namespace svg_test;

namespace {

std::unique_ptr<ADocument> readSample(const char* name) {
    std::string error;
    auto document = svg::readDrawing(std::string(KZ_SAMPLES "/") + name, error);
    EXPECT_TRUE(document) << error;
    return document;
}

std::map<std::string, int> countClasses(const ADocument& document) {
    std::map<std::string, int> counts;
    for (std::uint32_t i = 1; i <= document.getObjectCount(); ++i) {
        ++counts[document.getObject(i)->getClassName().toUtf8()];
    }
    return counts;
}

TEST(Samples, HarbourHasItsLayersAndClasses) {
    const auto document = readSample("harbour.svg");
    ASSERT_TRUE(document);
    std::string layers;
    for (ARoot* entry : document->getDatabase().children) {
        const auto& layer = static_cast<const ALayer&>(*entry);
        layers += layer.getTitle().toUtf8() + (layer.isLocked() ? " locked" : "") +
                  (layer.isHidden() ? " hidden" : "") + ';';
    }
    EXPECT_EQ(layers, "Sky locked;Harbour;Boats;Notes hidden;");
    const auto counts = countClasses(*document);
    for (const char* name : {"ARectangle", "AOval", "APolygon", "AEditPath", "AText", "AGroup", "AMask",
                             "AComposite", "AShadow"}) {
        EXPECT_TRUE(counts.contains(name)) << name;
    }
    EXPECT_EQ(counts.at("AShadow"), 2);
    EXPECT_EQ(fillOf(*document, "hull"), "Spot Harbour Navy");
    EXPECT_EQ(fillOf(*document, "pennant"), "Spot Signal Red");
    EXPECT_EQ(fillOf(*document, "quay"), "pattern stones");
    EXPECT_EQ(fillOf(*document, "main-sail"), "gradient sail-light");
    EXPECT_EQ(fillOf(*document, "house-2-wall"), "#d98c7a");
    EXPECT_EQ(strokeOf(*document, "gull-1"), "white");
    EXPECT_EQ(fillOf(*document, "gull-1"), "none");
    EXPECT_EQ(fillOf(*document, "note-light"), "crimson");
}

TEST(Samples, PlanHasDimensionsLabelsGuidesAndAMasterLayer) {
    const auto document = readSample("plan.svg");
    ASSERT_TRUE(document);
    const auto counts = countClasses(*document);
    EXPECT_EQ(counts.at("ADimensionH"), 6);
    EXPECT_EQ(counts.at("ADimensionV"), 3);
    EXPECT_EQ(counts.at("ADimension"), 1);
    EXPECT_EQ(counts.at("ALabel"), 1);
    EXPECT_EQ(counts.at("AGuideLine"), 2);
    EXPECT_EQ(document->getSecondaryDatabase()->children.GetCount(), 1);
    EXPECT_EQ(strokeOf(*document, "circuit"), "darkorange");
    // The line with its end marks; the figure stands between them.
    const AFRect hall = boundsOf(*document, "dim-hall");
    EXPECT_DOUBLE_EQ(hall.left, 444);
    EXPECT_DOUBLE_EQ(hall.right, 692);
    EXPECT_DOUBLE_EQ(hall.bottom, 736);
}

TEST(Samples, EveryObjectHasABox) {
    for (const char* name : {"harbour.svg", "plan.svg"}) {
        const auto document = readSample(name);
        for (std::uint32_t i = 1; i <= document->getObjectCount(); ++i) {
            AFRect bounds;
            document->getObject(i)->getBoundingRect(bounds);
            EXPECT_NE(bounds, AFRect()) << name << ' ' << document->getObject(i)->getNameUtf8();
        }
    }
}

}  // namespace
