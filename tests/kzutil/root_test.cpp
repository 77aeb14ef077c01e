#include <gtest/gtest.h>

#include "kzutil/root.h"
#include "tests/kzutil/text_printing.h"

namespace {

int structureOfRootOnly(const WCHAR* className, AString& structure) {
    structure = _T("Object/Root");
    return AString(className).Compare(_T("ARoot")) == 0 ? 1 : 0;
}

class ANamedRoot : public ARoot {
public:
    const AString& getClassName() const override {
        static const AString name(_T("ANamedRoot"));
        return name;
    }
};

TEST(Root, GivesTheEmptyAnswersOfABase) {
    const ARoot root;
    EXPECT_EQ(root.getClassName(), _T("ARoot"));
    EXPECT_EQ(root.getDisplayNameID(), 0u);
    EXPECT_EQ(root.getDisplayIconID(), 0u);
    EXPECT_EQ(root.createInstance(), nullptr);
    EXPECT_EQ(root.deepCopy(), nullptr);
    EXPECT_EQ(root.convertToOutline(), nullptr);
    EXPECT_EQ(root.shouldConvertToOutline(), 0);
    EXPECT_EQ(root.getVersion(), 0);
}

TEST(Root, AsksTheInstalledLookupForItsDisplayStructure) {
    AString structure(_T("before"));
    EXPECT_EQ(ARoot().getClassDisplayStructure(structure), 0);
    EXPECT_TRUE(structure.IsEmpty());
    setClassDisplayStructureLookup(structureOfRootOnly);
    EXPECT_EQ(ARoot().getClassDisplayStructure(structure), 1);
    EXPECT_EQ(structure, _T("Object/Root"));
    EXPECT_EQ(ANamedRoot().getClassDisplayStructure(structure), 0);
    EXPECT_TRUE(structure.IsEmpty());
    setClassDisplayStructureLookup(nullptr);
}

}  // namespace
