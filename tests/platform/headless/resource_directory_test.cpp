// The reader of resource directories, fed with honest and with lying images.
#include "platform/headless/resource_directory.h"

#include <gtest/gtest.h>

#include <random>

#include "platform/headless/module_file.h"
#include "platform/headless/text.h"
#include "tests/platform/headless/image_builder.h"
#include "tests/platform/module_path.h"

namespace {

using namespace headless;

std::string text_of(Bytes bytes) {
    return {bytes.begin(), bytes.end()};
}

struct Answer {
    DWORD error;
    std::string text;
};

// Copies what it finds: the image may be gone with the full expression.
Answer find(const Image& image, ResourceName type, ResourceName name) {
    const auto directory = open_resources(image);
    EXPECT_TRUE(directory.has_value());
    if (!directory) return {ERROR_BAD_EXE_FORMAT, ""};
    const FoundResource found = find_resource(*directory, type, name);
    return {found.error, text_of(found.resource.bytes)};
}

// What an untrusted image is asked, as a program would; answers how many bytes it was given.
std::size_t ask_everything(Bytes image) {
    const auto directory = open_resources(image);
    if (!directory) return 0;
    const ResourceName names[] = {{1, {}},      {7, {}},        {8, {}},    {10, {}},
                                  {0, u"blob"}, {0, u"kztype"}, {0, u"#10"}};
    std::string given;  // a copy, so that every byte is read
    for (const ResourceName& type : names) {
        for (const ResourceName& name : names) {
            given += text_of(find_resource(*directory, type, name).resource.bytes);
        }
    }
    for (const WORD id : {0, 15, 100, 101, 102, 103, 111, 0xffff}) {
        const auto text = find_string(*directory, id);
        if (text) given += text_of(*text);
    }
    return given.size();
}

Image sample_image() {
    return read_whole(to_utf8(module_path(u"localized.dll"))).bytes;
}

// A copy of exactly this size on the heap, so that AddressSanitizer sees the first byte behind it.
Image exact(const Image& image, std::size_t size) {
    return Image(image.begin(), image.begin() + static_cast<std::ptrdiff_t>(size));
}

TEST(ResourceDirectory, ReadsBothFormsOfImages) {
    for (const Form form : {Form::pe32, Form::pe32_plus}) {
        const auto found = find(build_image(SmallSection().builder.bytes, form).bytes, {10, {}}, {1, {}});
        EXPECT_EQ(found.error, DWORD{ERROR_SUCCESS});
        EXPECT_EQ(found.text, "abc");
    }
}

TEST(ResourceDirectory, GivesTheSameBytesByTheNumberOfTheDataEntry) {
    const SmallSection section;
    const Image image = build_image(section.builder.bytes).bytes;
    const auto directory = open_resources(image);
    ASSERT_TRUE(directory);
    EXPECT_EQ(find_resource(*directory, {10, {}}, {1, {}}).resource.entry, section.entry);
    const auto bytes = resource_bytes(*directory, section.entry);
    ASSERT_TRUE(bytes);
    EXPECT_EQ(text_of(*bytes), "abc");
}

TEST(ResourceDirectory, TellsAMissingTypeFromAMissingName) {
    const Image image = build_image(SmallSection().builder.bytes).bytes;
    EXPECT_EQ(find(image, {11, {}}, {1, {}}).error, DWORD{ERROR_RESOURCE_TYPE_NOT_FOUND});
    EXPECT_EQ(find(image, {10, {}}, {2, {}}).error, DWORD{ERROR_RESOURCE_NAME_NOT_FOUND});
    EXPECT_EQ(find(image, {0, u"TEN"}, {1, {}}).error, DWORD{ERROR_RESOURCE_TYPE_NOT_FOUND});
}

TEST(ResourceDirectory, TakesTheFirstLanguage) {
    SectionBuilder section;
    section.table({{10, table_flag | 24}});
    section.table({{1, table_flag | 48}});
    section.table({{0x407, 80}, {0x409, 96}});
    section.data_entry(section_address + 112, 2);
    section.data_entry(section_address + 114, 2);
    section.data("deen");
    EXPECT_EQ(find(build_image(section.bytes).bytes, {10, {}}, {1, {}}).text, "de");
}

TEST(ResourceDirectory, FoldsAsciiCaseOfNamesAndNothingElse) {
    SectionBuilder section;
    section.table({{table_flag | 72, table_flag | 24}});
    section.table({{1, table_flag | 48}});
    section.table({{0, 78}});
    section.name(u"\u00c4b");
    section.data_entry(section_address, 1);
    const Image image = build_image(section.bytes).bytes;
    EXPECT_EQ(find(image, {0, u"\u00c4B"}, {1, {}}).error, DWORD{ERROR_SUCCESS});
    EXPECT_EQ(find(image, {0, u"\u00e4b"}, {1, {}}).error, DWORD{ERROR_RESOURCE_TYPE_NOT_FOUND});
    EXPECT_EQ(find(image, {0, u"\u00c4bc"}, {1, {}}).error, DWORD{ERROR_RESOURCE_TYPE_NOT_FOUND});
}

TEST(ResourceDirectory, TakesAHashWithDigitsForANumber) {
    const Image image = build_image(SmallSection().builder.bytes).bytes;
    EXPECT_EQ(find(image, {0, u"#10"}, {0, u"#1"}).error, DWORD{ERROR_SUCCESS});
    EXPECT_EQ(find(image, {0, u"#10x"}, {0, u"#1"}).error, DWORD{ERROR_RESOURCE_TYPE_NOT_FOUND});
    EXPECT_EQ(find(image, {0, u"#65546"}, {0, u"#1"}).error, DWORD{ERROR_RESOURCE_TYPE_NOT_FOUND});
}

TEST(ResourceDirectory, AnImageWithoutResourcesHasNone) {
    BuiltImage built = build_image(SmallSection().builder.bytes);
    put_dword(built.bytes, built.directories_at + 16, 0);
    EXPECT_EQ(find(built.bytes, {10, {}}, {1, {}}).error, DWORD{ERROR_RESOURCE_TYPE_NOT_FOUND});
    built = build_image(SmallSection().builder.bytes);
    put_dword(built.bytes, built.directories_at - 4, 2);
    EXPECT_EQ(find(built.bytes, {10, {}}, {1, {}}).error, DWORD{ERROR_RESOURCE_TYPE_NOT_FOUND});
}

TEST(ResourceDirectory, RefusesWhatIsNoImage) {
    EXPECT_FALSE(open_resources({}));
    for (const std::size_t at : {std::size_t{0}, nt_at, optional_at}) {
        Image image = build_image(SmallSection().builder.bytes).bytes;
        image[at] ^= 0xff;
        EXPECT_FALSE(open_resources(image)) << at;
    }
    Image image = build_image(SmallSection().builder.bytes).bytes;
    put_dword(image, 60, 0xfffffff0);
    EXPECT_FALSE(open_resources(image));
    image = build_image(SmallSection().builder.bytes).bytes;
    put_word(image, section_count_at, 0xffff);
    EXPECT_FALSE(open_resources(image));
}

TEST(ResourceDirectory, LyingSectionHoldsNothing) {
    for (const DWORD lie : {0x7fffffffu, 0xffffffffu, 0x80000000u}) {
        BuiltImage built = build_image(SmallSection().builder.bytes);
        put_dword(built.bytes, built.section_header_at + 20, lie);  // where it stands in the file
        EXPECT_EQ(find(built.bytes, {10, {}}, {1, {}}).error, DWORD{ERROR_RESOURCE_TYPE_NOT_FOUND});
        built = build_image(SmallSection().builder.bytes);
        put_dword(built.bytes, built.section_header_at + 8, lie);  // both sizes
        put_dword(built.bytes, built.section_header_at + 16, lie);
        EXPECT_EQ(find(built.bytes, {10, {}}, {1, {}}).error, DWORD{ERROR_RESOURCE_TYPE_NOT_FOUND});
        built = build_image(SmallSection().builder.bytes);
        put_dword(built.bytes, built.directories_at + 16, lie);  // where the root table is
        EXPECT_EQ(find(built.bytes, {10, {}}, {1, {}}).error, DWORD{ERROR_RESOURCE_TYPE_NOT_FOUND});
    }
}

TEST(ResourceDirectory, LyingDataEntryGivesNoBytes) {
    const SmallSection section;
    const struct {
        DWORD address, size;
    } lies[] = {{section_address + 88, 4},    {section_address + 88, 0xffffffff}, {0, 1},
                {section_address - 1, 2},     {section_address + 91, 0},          {0xffffffff, 1},
                {section_address, 0x80000000}};
    for (const auto& lie : lies) {
        Image bytes = section.builder.bytes;
        put_dword(bytes, section.entry, lie.address);
        put_dword(bytes, section.entry + 4, lie.size);
        EXPECT_EQ(find(build_image(bytes).bytes, {10, {}}, {1, {}}).error,
                  DWORD{ERROR_RESOURCE_DATA_NOT_FOUND});
    }
}

TEST(ResourceDirectory, TableThatContainsItselfEndsAtTheThirdLevel) {
    SectionBuilder section;
    section.table({{1, table_flag | 0}});
    EXPECT_EQ(find(build_image(section.bytes).bytes, {1, {}}, {1, {}}).error,
              DWORD{ERROR_RESOURCE_DATA_NOT_FOUND});
}

TEST(ResourceDirectory, DataWhereATableBelongsIsNoResource) {
    SectionBuilder section;
    section.table({{1, 24}});
    section.data_entry(section_address, 1);
    EXPECT_EQ(find(build_image(section.bytes).bytes, {1, {}}, {1, {}}).error,
              DWORD{ERROR_RESOURCE_DATA_NOT_FOUND});
}

TEST(ResourceDirectory, TableLevelsBeyondTheLastAreNoResource) {
    SectionBuilder section;
    for (DWORD level = 0; level < 1000; ++level) section.table({{1, table_flag | ((level + 1) * 24)}});
    EXPECT_EQ(find(build_image(section.bytes).bytes, {1, {}}, {1, {}}).error,
              DWORD{ERROR_RESOURCE_DATA_NOT_FOUND});
}

TEST(ResourceDirectory, TableThatClaimsMoreEntriesThanItHasIsReadToItsEnd) {
    SmallSection section;
    put_word(section.builder.bytes, 12, 0xffff);
    put_word(section.builder.bytes, 14, 0xffff);
    const Image image = build_image(section.builder.bytes).bytes;
    EXPECT_EQ(find(image, {10, {}}, {1, {}}).error, DWORD{ERROR_SUCCESS});
    EXPECT_EQ(find(image, {0, u"none"}, {1, {}}).error, DWORD{ERROR_RESOURCE_TYPE_NOT_FOUND});
}

TEST(ResourceDirectory, NameBeyondTheSectionMatchesNothing) {
    for (const DWORD offset : {0x7fffffffu, 89u, 90u, 91u}) {
        SmallSection section;
        put_dword(section.builder.bytes, 16, table_flag | offset);
        EXPECT_EQ(find(build_image(section.builder.bytes).bytes, {0, u"x"}, {1, {}}).error,
                  DWORD{ERROR_RESOURCE_TYPE_NOT_FOUND});
    }
}

TEST(ResourceDirectory, StringBlockThatEndsEarlyHasTheStringsBeforeItsEnd) {
    SectionBuilder section;
    section.table({{6, table_flag | 24}});
    section.table({{1, table_flag | 48}});
    section.table({{0, 72}});
    section.data_entry(section_address + 88, 7);
    section.data(std::string_view("\1\0a\0\5\0b", 7));  // "a", then a string of five that is cut
    const Image image = build_image(section.bytes).bytes;
    const auto directory = open_resources(image);
    ASSERT_TRUE(directory);
    const auto first = find_string(*directory, 0);
    ASSERT_TRUE(first);
    EXPECT_EQ(text_of(*first), std::string("a\0", 2));
    EXPECT_FALSE(find_string(*directory, 1));
    EXPECT_FALSE(find_string(*directory, 2));
    EXPECT_FALSE(find_string(*directory, 16));
}

TEST(ResourceDirectory, ImageCutAtAnyLengthGivesNoMoreThanTheWholeOne) {
    const Image image = sample_image();
    const std::size_t whole = ask_everything(image);
    ASSERT_GT(whole, 0u);
    for (std::size_t size = 0; size < image.size(); ++size) {
        EXPECT_LE(ask_everything(exact(image, size)), whole) << size;
    }
}

TEST(ResourceDirectory, ImageWithFlippedBitsIsReadWithinItsBounds) {
    const Image image = sample_image();
    std::mt19937 random(20240229);
    const auto below = [&](std::size_t limit) { return random() % limit; };
    // Headers are where a flipped bit says something; the rest is mostly padding.
    const std::size_t headers = std::min<std::size_t>(image.size(), 0x400);
    std::size_t opened = 0;
    for (int round = 0; round < 20000; ++round) {
        Image garbled = exact(image, image.size() - (round % 4 == 0 ? below(image.size()) : 0));
        for (std::size_t flips = 1 + below(8); flips > 0 && !garbled.empty(); --flips) {
            const std::size_t at =
                below(2) == 0 ? below(std::min(headers, garbled.size())) : below(garbled.size());
            garbled[at] ^= static_cast<std::uint8_t>(1 << below(8));
        }
        // 7 types x 7 names and 8 strings: each at most the image.
        const std::size_t given = ask_everything(garbled);
        EXPECT_LE(given, 57 * garbled.size());
        opened += given > 0;
    }
    EXPECT_GT(opened, 1000u);  // otherwise the flips only ever hit the signatures
}

}  // namespace
