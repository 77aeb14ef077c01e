// Whole scripts against what they have to print and draw.
//
//     tests/golden/CASE/drawing.svg     what the script opens
//                       script.kzs      runs in a folder that holds nothing but the drawing; writes view.png
//                       expected.json   every line that the script prints, exactly
//                       view.png        the picture, the same on every build, pixel for pixel: cairo draws on all of them,
//                                       in one version. Letters come from the system, so no case draws any.
//
// What a case printed and drew stays in golden/CASE of the build, beside a picture of the differences.
// tests/golden/accept CASE takes what is drawn now for right, once somebody has looked at it.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>

#include "app/process.h"
#include "canvas/image.h"

namespace {

namespace fs = std::filesystem;

std::string bytesOf(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(stream), {});
}

AImage imageOf(const fs::path& file) {
    const std::string bytes = bytesOf(file);
    return decodeImage({reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size()});
}

// Red where the two differ, else a pale version of the first. They have the same size.
AImage differencePicture(const AImage& expected, const AImage& actual, std::size_t& different) {
    AImage picture(expected.width(), expected.height());
    different = 0;
    for (std::size_t i = 0; i < picture.pixels().size(); ++i) {
        const std::uint32_t pixel = expected.pixels()[i];
        const bool differs = pixel != actual.pixels()[i];
        different += differs ? 1 : 0;
        picture.pixels()[i] = differs ? 0xffff0000 : 0xff000000 | ((pixel >> 2 & 0x3f3f3f) + 0xc0c0c0);
    }
    return picture;
}

std::vector<std::string> caseNames() {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(KZ_GOLDEN)) {
        if (entry.is_directory()) names.push_back(test::utf8(entry.path().filename()));
    }
    std::ranges::sort(names);
    return names;
}

// Back in the folder from before at the end of the block.
class WorkingFolder {
public:
    explicit WorkingFolder(const fs::path& folder) { fs::current_path(folder); }
    ~WorkingFolder() { fs::current_path(m_before); }
    WorkingFolder(const WorkingFolder&) = delete;
    WorkingFolder& operator=(const WorkingFolder&) = delete;

private:
    fs::path m_before = fs::current_path();
};

class Golden : public testing::TestWithParam<std::string> {
protected:
    const fs::path golden = fs::path(KZ_GOLDEN) / GetParam();
    const fs::path output = fs::path(KZ_GOLDEN_OUTPUT) / GetParam();

    test::Outcome runScript() {
        fs::remove_all(output);
        fs::create_directories(output);
        fs::copy_file(golden / "drawing.svg", output / "drawing.svg");
        const fs::path script = fs::absolute(golden / "script.kzs");
        const fs::path program = fs::absolute(test::kzdraw());
        const WorkingFolder folder(output);
        return test::runProgram(program, {"script", test::utf8(script)});
    }
};

}  // namespace

TEST_P(Golden, PrintsAndDrawsWhatIsExpected) {
    const test::Outcome outcome = runScript();
    std::ofstream(output / "actual.json", std::ios::binary) << outcome.out;
    EXPECT_EQ(outcome, (test::Outcome{0, test::readText(golden / "expected.json"), ""}));
    const AImage actual = imageOf(output / "view.png");
    ASSERT_FALSE(actual.empty()) << "the script draws no view.png";
    const AImage expected = imageOf(golden / "view.png");
    ASSERT_EQ(actual.width(), expected.width());
    ASSERT_EQ(actual.height(), expected.height());
    std::size_t different = 0;
    const AImage picture = differencePicture(expected, actual, different);
    if (different == 0) return;
    const fs::path file = output / "difference.png";
    std::ofstream(file, std::ios::binary) << encodePng(picture);
    ADD_FAILURE() << different << " pixels differ: see " << file;
}

INSTANTIATE_TEST_SUITE_P(Cases, Golden, testing::ValuesIn(caseNames()),
                         [](const testing::TestParamInfo<std::string>& one) { return one.param; });
