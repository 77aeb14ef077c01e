// Names of objects.
#include "support.h"

using namespace svg_test;

namespace {

std::string namesOf(const std::string& body) {
    const auto document = readBody(body);
    std::string names;
    for (std::uint32_t i = 1; i <= document->getObjectCount(); ++i) {
        names += (i == 1 ? "" : " ") + std::string(document->getObject(i)->getNameUtf8());
    }
    return names;
}

TEST(Names, AreTheIds) {
    EXPECT_EQ(namesOf("<rect id='one'/><g id='two'><path id='three'/></g>"), "one two three");
}

TEST(Names, AreMadeOfTheElementAndANumber) {
    EXPECT_EQ(namesOf("<rect/><rect/><g><path/><rect id=''/></g><use/>"),
              "rect-1 rect-2 g-1 path-1 rect-3 use-1");
}

TEST(Names, ThatAreMadeLeaveOutIdsThatComeLater) {
    EXPECT_EQ(namesOf("<rect/><rect/><rect/><rect id='rect-2'/><g id='rect-4'/><rect/><rect id='rect-1'/>"),
              "rect-3 rect-5 rect-6 rect-2 rect-4 rect-7 rect-1");
}

TEST(Names, ThatAreMadeLeaveOutIdsOfWhatIsNoObject) {
    EXPECT_EQ(namesOf("<linearGradient id='rect-1'/><rect/>"), "rect-2");
}

TEST(Names, OfRepeatedIdsGetASuffix) {
    EXPECT_EQ(namesOf("<rect id='a'/><rect id='a'/><rect id='a-2'/><rect id='a'/>"), "a a-3 a-2 a-4");
}

TEST(Names, OfRepeatedIdsDoNotMeetMadeOnes) {
    EXPECT_EQ(namesOf("<rect id='rect'/><rect id='rect'/><rect/><rect/>"), "rect rect-2 rect-1 rect-3");
}

TEST(Names, WithNumbersBeyondEveryMadeOneDoNotDisturb) {
    EXPECT_EQ(namesOf("<rect id='rect-99999999999999999999'/><rect id='rect-'/><rect id='rect-01'/><rect/>"),
              "rect-99999999999999999999 rect- rect-01 rect-2");
}

TEST(Names, HaveNoSlash) {
    EXPECT_EQ(namesOf("<rect id='a/b/c'/>"),
              "a\xE2\x88\x95"
              "b\xE2\x88\x95"
              "c");
}

TEST(Names, AreValidUtf8) {
    EXPECT_EQ(namesOf("<rect id='K\xC3\xBC"
                      "che'/><rect id='x\xFFy'/>"),
              "K\xC3\xBC"
              "che x\xEF\xBF\xBDy");
}

TEST(Names, OfAMillionRepeatedIdsTakeNoSearch) {
    std::string body;
    constexpr int kCount = 20000;
    for (int i = 0; i < kCount; ++i) body += "<rect id='same'/>";
    const auto document = readBody(body);
    EXPECT_EQ(document->getObjectCount(), kCount);
    EXPECT_TRUE(document->findObject("same-" + std::to_string(kCount)));
}

TEST(Names, OfRepeatedContentAreMade) {
    EXPECT_EQ(namesOf("<use id='u' href='#r'/><rect id='r'/>"), "u rect-1 r");
}

}  // namespace
