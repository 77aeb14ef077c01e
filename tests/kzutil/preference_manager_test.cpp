#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <iterator>
#include <thread>

#include "kzutil/user_folder.h"
#include "support/failing_new.h"
#include "support/stored_pair.h"
#include "support/temp_folder.h"
#include "support/user_folder.h"

namespace fs = std::filesystem;

namespace {

class PreferenceManager : public testing::Test {
protected:
    test::TempFolder folder;
    const fs::path file = folder.path() / "prefs" / "AStoredPair.prefs";
    AStoredPair pair;

    void SetUp() override { APreferenceManager::setFolder(folder.path() / "prefs"); }
    void TearDown() override { APreferenceManager::setFolder({}); }

    void write(const Bytes& bytes) {
        folder.write("prefs/AStoredPair.prefs", std::string(bytes.begin(), bytes.end()));
    }
    Bytes bytes() {
        std::ifstream stream(file, std::ios::binary);
        return Bytes(std::istreambuf_iterator<char>(stream), {});
    }
    std::string problem() {
        std::string text;
        EXPECT_EQ(APreferenceManager::readPrefs(&pair, text), 0);
        const std::u8string name = file.u8string();
        const std::string begin = std::string(name.begin(), name.end()) + ": ";
        EXPECT_TRUE(text.starts_with(begin)) << text;
        return text.substr(std::min(begin.size(), text.size()));
    }
    void expectUnchanged(const std::string& what) {
        EXPECT_EQ(APreferenceManager::readPrefs(&pair), 0) << what;
        EXPECT_EQ(pair, AStoredPair(1, 2)) << what;
    }
    std::vector<std::string> files() {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(file.parent_path()))
            names.push_back(entry.path().filename().string());
        std::ranges::sort(names);
        return names;
    }
};

using Names = std::vector<std::string>;

}  // namespace

TEST_F(PreferenceManager, GivesBackWhatWasStored) {
    AStoredPair stored(-1, 300);
    EXPECT_EQ(APreferenceManager::writePrefs(&stored), 1);
    EXPECT_EQ(APreferenceManager::readPrefs(&pair), 1);
    EXPECT_EQ(pair, stored);
    EXPECT_EQ(files(), Names{"AStoredPair.prefs"});
}

TEST_F(PreferenceManager, WritesAnArchiveThatBeginsWithTheClass) {
    AStoredPair stored(-1, 300);
    EXPECT_EQ(APreferenceManager::writePrefs(&stored), 1);
    EXPECT_EQ(bytes(), sealed(storedPairContent(-1, 300)));
}

TEST_F(PreferenceManager, LeavesTheObjectAsItIsWhenNothingIsStored) {
    std::string text = "before";
    EXPECT_EQ(APreferenceManager::readPrefs(&pair, text), 0);
    EXPECT_EQ(pair, AStoredPair(1, 2));
    EXPECT_EQ(text, "");
    EXPECT_FALSE(fs::exists(file.parent_path())) << "reading makes nothing";
}

TEST_F(PreferenceManager, DoesNothingWithoutAFolder) {
    APreferenceManager::setFolder({});
    EXPECT_EQ(APreferenceManager::writePrefs(&pair), 0);
    EXPECT_EQ(APreferenceManager::readPrefs(&pair), 0);
    std::string text;
    EXPECT_TRUE(APreferenceManager::removePrefs(text));
}

TEST_F(PreferenceManager, ReplacesWhatWasStored) {
    for (int i = 0; i < 3; ++i) {
        AStoredPair stored(i, -i);
        EXPECT_EQ(APreferenceManager::writePrefs(&stored), 1);
    }
    EXPECT_EQ(APreferenceManager::readPrefs(&pair), 1);
    EXPECT_EQ(pair, AStoredPair(2, -2));
}

TEST_F(PreferenceManager, TakesNoTruncatedFile) {
    const Bytes whole = sealed(storedPairContent(7, 8));
    for (std::size_t size = 0; size < whole.size(); ++size) {
        write(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size)));
        expectUnchanged(std::to_string(size) + " bytes");
    }
    write(whole);
    EXPECT_EQ(APreferenceManager::readPrefs(&pair), 1);
    EXPECT_EQ(pair, AStoredPair(7, 8));
}

TEST_F(PreferenceManager, TakesNoFileWithADamagedByte) {
    const Bytes whole = sealed(storedPairContent(7, 8));
    for (std::size_t at = 0; at < whole.size(); ++at) {
        Bytes damaged = whole;
        damaged[at] ^= 0x20;
        write(damaged);
        expectUnchanged("byte " + std::to_string(at));
    }
}

// The checksum is right, what stands behind it ends after any number of bytes: nothing is half read.
TEST_F(PreferenceManager, TakesNoRecordThatEndsTooEarly) {
    const Bytes whole = storedPairContent(7, 8);
    for (std::size_t size = 0; size < whole.size(); ++size) {
        write(sealed(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size))));
        expectUnchanged(std::to_string(size) + " bytes of content");
    }
}

TEST_F(PreferenceManager, PutsTheObjectBackWhenItWasHalfRead) {
    Bytes content = storedPairContent(7, 8);
    content[content.size() - 5] = 9;  // the second field's tag
    write(sealed(content));
    expectUnchanged("another tag");
    EXPECT_EQ(problem().find("another tag was expected"), 0U);
}

TEST_F(PreferenceManager, TakesNoForeignFile) {
    write(sealed(storedPairContent(7, 8, _T("AOtherPair"))));
    expectUnchanged("of another class");
    EXPECT_EQ(problem(), "these are preferences of another class");
    const std::string text = "<svg xmlns='http://www.w3.org/2000/svg'/>";
    write(Bytes(text.begin(), text.end()));
    expectUnchanged("a drawing");
    EXPECT_EQ(problem(), "this is no archive (byte 0)");
}

TEST_F(PreferenceManager, TakesNothingThatIsNoOrdinaryFile) {
    fs::create_directories(file);
    expectUnchanged("a folder");
    EXPECT_EQ(problem(), "it is no ordinary file");
    EXPECT_EQ(APreferenceManager::writePrefs(&pair), 0);
}

TEST_F(PreferenceManager, TakesNoFileThatIsTooLong) {
    write(Bytes((std::size_t{1} << 20) + 1));
    expectUnchanged("a megabyte");
    EXPECT_EQ(problem(), "it is too long");
}

TEST_F(PreferenceManager, TakesARecordOfALaterVersion) {
    Bytes content = storedPairContent(7, 8);
    const Bytes later = {3, 1, 2, 3, 4};
    content.insert(content.end(), later.begin(), later.end());
    content[8 + 2 * 11] = static_cast<BYTE>(content[8 + 2 * 11] + later.size());  // the record's length
    write(sealed(content));
    EXPECT_EQ(APreferenceManager::readPrefs(&pair), 1);
    EXPECT_EQ(pair, AStoredPair(7, 8));
}

TEST_F(PreferenceManager, PutsTheObjectBackWhenItsClassFails) {
    write(sealed(storedPairContent(7, 8)));
    pair.throws = true;
    expectUnchanged("an exception half way");
    pair.throws = false;
    pair.refuses = true;
    EXPECT_EQ(APreferenceManager::readPrefs(&pair), 0);
    EXPECT_EQ(APreferenceManager::writePrefs(&pair), 0);
    EXPECT_EQ(bytes(), sealed(storedPairContent(7, 8))) << "what was stored is there still";
}

TEST_F(PreferenceManager, KeepsWhatWasStoredWhenMemoryRunsOut) {
    AStoredPair stored(3, 4);
    ASSERT_EQ(APreferenceManager::writePrefs(&stored), 1);
    for (int n = 1;; ++n) {
        stored = AStoredPair(3, 4 + n);
        const AllocationFailure failing = failAllocation(n);
        const int written = APreferenceManager::writePrefs(&stored);
        if (!failing.happened()) break;
        AStoredPair now;
        ASSERT_EQ(APreferenceManager::readPrefs(&now), 1) << n;
        EXPECT_TRUE(now == stored || (!written && now == AStoredPair(3, 4))) << n << ": " << now;
        stored = AStoredPair(3, 4);
        ASSERT_EQ(APreferenceManager::writePrefs(&stored), 1);
    }
    EXPECT_EQ(files(), Names{"AStoredPair.prefs"});
}

TEST_F(PreferenceManager, ReadsAllOrNothingWhenMemoryRunsOut) {
    AStoredPair stored(3, 4);
    ASSERT_EQ(APreferenceManager::writePrefs(&stored), 1);
    for (int n = 1;; ++n) {
        pair = AStoredPair();
        const AllocationFailure failing = failAllocation(n);
        const int read = APreferenceManager::readPrefs(&pair);
        EXPECT_EQ(pair, read ? stored : AStoredPair()) << n;
        if (!failing.happened()) break;
    }
}

TEST_F(PreferenceManager, RemovesWhatAKilledProgramLeft) {
    const char* left = "prefs/.AStoredPair.prefs-0123456789abcdef.part";
    for (const std::string& begun : {std::string(), std::string("KZAR"), std::string(100'000, 'x')}) {
        folder.write(left, begun);
        folder.write("prefs/.AStoredPair.prefs-mine.part", "not ours");
        AStoredPair stored(5, 6);
        EXPECT_EQ(APreferenceManager::writePrefs(&stored), 1);
        EXPECT_EQ(files(), (Names{".AStoredPair.prefs-mine.part", "AStoredPair.prefs"}));
    }
}

TEST_F(PreferenceManager, DoesNotReadWhatAKilledProgramLeft) {
    const Bytes whole = sealed(storedPairContent(7, 8));
    folder.write("prefs/.AStoredPair.prefs-0123456789abcdef.part", std::string(whole.begin(), whole.end()));
    expectUnchanged("not yet named");
}

// Readers find the whole of what one of the writers wrote, whenever they look, and so does the end.
TEST_F(PreferenceManager, TakesManyWritersAtOnce) {
    constexpr int kWriters = 3, kTimes = 100;
    AStoredPair begin(0, 0);
    ASSERT_EQ(APreferenceManager::writePrefs(&begin), 1);
    std::atomic<int> running = kWriters;
    std::atomic<int> written = 0;
    std::vector<std::thread> writers;
    for (int writer = 1; writer <= kWriters; ++writer) {
        writers.emplace_back([writer, &running, &written] {
            for (int i = 0; i < kTimes; ++i) {
                AStoredPair mine(writer, writer * 1000);
                written += APreferenceManager::writePrefs(&mine);
            }
            --running;
        });
    }
    int found = 0;
    do {
        AStoredPair now(-1, -1);
        if (!APreferenceManager::readPrefs(&now)) continue;
        ++found;
        EXPECT_EQ(now.second, now.first * 1000);
    } while (running > 0);
    for (std::thread& writer : writers) writer.join();
    EXPECT_GT(written, 0);
    EXPECT_GT(found, 0);
    ASSERT_EQ(APreferenceManager::readPrefs(&pair), 1);
    EXPECT_EQ(pair.second, pair.first * 1000);
    AStoredPair last(9, 9000);
    EXPECT_EQ(APreferenceManager::writePrefs(&last), 1);
    EXPECT_EQ(files(), Names{"AStoredPair.prefs"});
}

TEST_F(PreferenceManager, RefusesAClassThatNoFileCanBeCalledAfter) {
    struct Elsewhere : AStoredPair {
        const AString& getClassName() const override {
            static const AString name(_T("../AStoredPair"));
            return name;
        }
    } elsewhere;
    EXPECT_EQ(APreferenceManager::writePrefs(&elsewhere), 0);
    EXPECT_EQ(APreferenceManager::readPrefs(&elsewhere), 0);
    EXPECT_TRUE(fs::is_empty(folder.path()));
}

TEST_F(PreferenceManager, ForgetsEverythingButOtherFiles) {
    ASSERT_EQ(APreferenceManager::writePrefs(&pair), 1);
    folder.write("prefs/ABroken.prefs", "x");
    folder.write("prefs/notes.txt", "mine");
    std::string text = "before";
    EXPECT_TRUE(APreferenceManager::removePrefs(text));
    EXPECT_EQ(text, "");
    EXPECT_EQ(files(), Names{"notes.txt"});
}

TEST(UserFolder, IsWhatTheEnvironmentSays) {
    const test::TempFolder folder;
    const fs::path before = kzutil::userConfigurationFolder();
    const fs::path named = folder.path() / fs::path(u8"\u6E2F \u00E9");
    test::setUserFolder(named);
    EXPECT_EQ(kzutil::userConfigurationFolder(), named);
    test::setUserFolder(before);
    EXPECT_EQ(kzutil::userConfigurationFolder(), before);
    EXPECT_NE(before, fs::path());
}
