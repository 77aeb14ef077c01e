// Layers, hidden and locked objects.
#include "support.h"

using namespace svg_test;

namespace {

TEST(Layers, AreTopLevelGroupsOfLayerMode) {
    EXPECT_EQ(tree("<g inkscape:groupmode='layer' inkscape:label='Walls'>"
                   "<g inkscape:groupmode='layer' id='sub'><rect id='a'/></g></g>"
                   "<g inkscape:groupmode='layer' id='second'/><g inkscape:groupmode='layer'/>"),
              "ALayer 'Walls'\n  AGroup sub\n    ARectangle a fill=black stroke=none\n"
              "ALayer 'second'\nALayer 'Layer'\n");
}

TEST(Layers, AreLockedAndHidden) {
    EXPECT_EQ(tree("<g inkscape:groupmode='layer' inkscape:label='L' sodipodi:insensitive='true'/>"
                   "<g inkscape:groupmode='layer' inkscape:label='H' style='display:none'/>"
                   "<g inkscape:groupmode='layer' inkscape:label='N' display='inline'/>"),
              "ALayer 'L' locked\nALayer 'H' hidden\nALayer 'N'\n");
}

TEST(Layers, ThatAreHiddenDoNotMarkTheirObjects) {
    EXPECT_EQ(tree("<g inkscape:groupmode='layer' inkscape:label='H' display='none'><rect id='a'/></g>"),
              "ALayer 'H' hidden\n  ARectangle a fill=black stroke=none\n");
}

TEST(Layers, NameTheirClassAndTheMasterDatabase) {
    EXPECT_EQ(
        tree("<g inkscape:groupmode='layer' inkscape:label='G' kz:class='AGuideLayer'/>"
             "<g inkscape:groupmode='layer' inkscape:label='M' kz:class='AMasterLayer' kz:database='master'>"
             "<rect id='a'/></g><g inkscape:groupmode='layer' inkscape:label='N' kz:class='ARectangle'/>"),
        "AGuideLayer 'G'\nALayer 'N'\n"
        "master:\nAMasterLayer 'M'\n  ARectangle a fill=black stroke=none\n");
}

TEST(Layers, LooseObjectsShareOneLayerWhereTheFirstStands) {
    EXPECT_EQ(tree("<g inkscape:groupmode='layer' inkscape:label='A'/><rect id='a'/>"
                   "<g inkscape:groupmode='layer' inkscape:label='B'/><rect id='b'/>"),
              "ALayer 'A'\nALayer 'Layer 1'\n  ARectangle a fill=black stroke=none\n"
              "  ARectangle b fill=black stroke=none\nALayer 'B'\n");
}

TEST(Layers, LooseLayerTakesATitleThatNoLayerHas) {
    EXPECT_EQ(tree("<rect id='a'/><g inkscape:groupmode='layer' inkscape:label='Layer 1'/>"),
              "ALayer 'Layer 2'\n  ARectangle a fill=black stroke=none\nALayer 'Layer 1'\n");
}

TEST(Layers, OfAnEmptyDrawingAreNone) {
    EXPECT_EQ(tree("<defs/>"), "");
}

TEST(Layers, TitlesHaveNoSlash) {
    EXPECT_EQ(tree("<g inkscape:groupmode='layer' inkscape:label='In/Out'/>"),
              "ALayer 'In\xE2\x88\x95Out'\n");
}

TEST(Hidden, ByDisplayOfTheObjectOrAGroupAroundIt) {
    EXPECT_EQ(tree("<rect id='a' display='none'/><g id='g' style='display:none'><g id='h' display='inline'>"
                   "<rect id='b' display='inline'/></g></g>"),
              "ALayer 'Layer 1'\n  ARectangle a fill=black stroke=none hidden\n  AGroup g\n    AGroup h\n"
              "      ARectangle b fill=black stroke=none hidden\n");
}

TEST(Hidden, ByVisibilityWhichAChildMayTakeBack) {
    EXPECT_EQ(tree("<g id='g' visibility='hidden'><rect id='a'/><rect id='b' visibility='visible'/>"
                   "<rect id='c' visibility='collapse'/></g>"),
              "ALayer 'Layer 1'\n  AGroup g\n    ARectangle a fill=black stroke=none hidden\n"
              "    ARectangle b fill=black stroke=none\n    ARectangle c fill=black stroke=none hidden\n");
}

TEST(Hidden, ClosedContainersAndBitmapsAreOpenContainersAreNot) {
    EXPECT_EQ(tree("<g display='none' id='g'><use id='u'/><image id='i'/>"
                   "<g id='e' kz:class='AStripe'/><g id='m' kz:class='AMask'/></g>"),
              "ALayer 'Layer 1'\n  AGroup g\n    AComposite u hidden\n    ABitmap i hidden\n    AStripe e\n"
              "    AMask m\n");
}

TEST(Locked, IsTheElementThatSaysSo) {
    EXPECT_EQ(tree("<g id='g' sodipodi:insensitive='true'><rect id='a'/></g>"
                   "<rect id='b' sodipodi:insensitive='true'/><rect id='c' sodipodi:insensitive='false'/>"),
              "ALayer 'Layer 1'\n  AGroup g locked\n    ARectangle a fill=black stroke=none\n"
              "  ARectangle b fill=black stroke=none locked\n  ARectangle c fill=black stroke=none\n");
}

}  // namespace
