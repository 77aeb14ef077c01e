// Memory that runs out anywhere between main's first line and its last: an orderly end, never another result.
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

#include "app/process.h"
#include "app/sea.h"
#include "support/program_folder.h"
#include "support/temp_folder.h"

using test::Outcome;

namespace {

// A variable of the environment, for the programs that are run meanwhile.
class Variable {
public:
    Variable(const char* name, const std::string& value) : m_name(name) { setenv(name, value.c_str(), 1); }
    ~Variable() { unsetenv(m_name); }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

private:
    const char* m_name;
};

bool isIn(const char* part, const std::string& text) {
    return text.find(part) != text.npos;
}

class Memory : public testing::Test {
protected:
    test::TempFolder folder;
    std::string sea = test::utf8(folder.write("sea.svg", test::kSea));

    struct Result {
        Outcome outcome;
        std::string written;
    };
    Result run(const std::vector<std::string>& arguments, const std::filesystem::path& out) {
        const Variable preload("LD_PRELOAD", test::utf8(test::programFolder() / "failing_malloc.so"));
        std::filesystem::remove(out);
        Result result{test::runKzdraw(arguments), {}};
        if (std::filesystem::exists(out)) result.written = test::readText(out);
        return result;
    }
    long requestsOf(const std::vector<std::string>& arguments) {
        const std::filesystem::path file = folder.path() / "count";
        const Variable told("KZ_COUNT_TO", file.string());
        run(arguments, {});
        long count = 0;
        std::ifstream(file) >> count;
        return count;
    }

    // Twice so many requests, spread over all of them; KZ_EVERY_REQUEST in the environment: each.
    void expectAnOrderlyEnd(const std::vector<std::string>& arguments, const std::filesystem::path& out = {},
                            long runs = 60) {
        const long requests = requestsOf(arguments);
        ASSERT_GT(requests, 500);
        const long step = std::getenv("KZ_EVERY_REQUEST") ? 1 : requests / runs + 1;
        const Result whole = run(arguments, out);
        ASSERT_EQ(whole.outcome.status, 0) << whole.outcome;
        for (const bool once : {true, false}) {
            for (long at = once ? 1 : 2; at <= requests; at += step)
                expectOrderlyAt(at, once, arguments, whole, out);
        }
    }
    void expectOrderlyAt(long at, bool once, const std::vector<std::string>& arguments, const Result& whole,
                         const std::filesystem::path& out) {
        SCOPED_TRACE((once ? "request " : "requests from ") + std::to_string(at));
        const Variable failing("KZ_FAIL_AT", std::to_string(at));
        const std::unique_ptr<Variable> alone(once ? new Variable("KZ_FAIL_ONCE", "1") : nullptr);
        const Result result = run(arguments, out);
        if (result.outcome.status == 0) {
            EXPECT_EQ(result.written, whole.written);
            EXPECT_EQ(result.outcome.out, whole.outcome.out);
            // A plug-in that a picture does not need may be told to be left out.
            EXPECT_TRUE(result.outcome.err == whole.outcome.err || isIn("plug-in", result.outcome.err))
                << result.outcome;
            return;
        }
        EXPECT_EQ(result.outcome.status, 2) << result.outcome;
        EXPECT_TRUE(result.outcome.err.starts_with("kzdraw: ")) << result.outcome;
        // The system's loader does not say that memory was what it lacked.
        EXPECT_TRUE(isIn("memory", result.outcome.err) || isIn("cannot load the plug-in", result.outcome.err))
            << result.outcome;
        EXPECT_EQ(result.written, "");
    }
};

}  // namespace

TEST_F(Memory, SelectsOrEndsInOrder) {
    expectAnOrderlyEnd({"select", sea, "--same-color-as", "hull", "--json"});
}

TEST_F(Memory, SelectsInSeveralDrawingsOrTellsWhichFailed) {
    expectAnOrderlyEnd({"select", sea, sea, "--same-color-as", "hull", "--json"});
}

TEST_F(Memory, WritesTheSameDrawingOrNone) {
    const std::filesystem::path out = folder.path() / "out.svg";
    expectAnOrderlyEnd({"view", sea, "--hide", "red", "-o", test::utf8(out)}, out);
}

TEST_F(Memory, DrawsTheSamePictureOrNone) {
    const std::filesystem::path out = folder.path() / "out.png";
    expectAnOrderlyEnd({"view", sea, "--hide", "red", "-o", test::utf8(out)}, out);
    const std::string shapes = test::utf8(folder.write("shapes.svg", R"svg(
<svg xmlns="http://www.w3.org/2000/svg" width="40" height="30">
  <linearGradient id="g"><stop stop-color="red"/><stop offset="1" stop-color="blue"/></linearGradient>
  <clipPath id="c"><circle cx="15" cy="15" r="12"/></clipPath>
  <pattern id="p" width="5" height="5" patternUnits="userSpaceOnUse"><circle cx="2" cy="2" r="2"/></pattern>
  <rect width="30" height="20" fill="url(#g)" clip-path="url(#c)" opacity=".5"/>
  <path d="M2,2 C30,5 5,25 38,28" fill="none" stroke="url(#p)" stroke-width="5" stroke-dasharray="4 1"/>
</svg>)svg"));
    expectAnOrderlyEnd({"render", shapes, "-o", test::utf8(out)}, out);
    const std::string text = test::utf8(folder.write("text.svg", R"svg(
<svg xmlns="http://www.w3.org/2000/svg" width="40" height="30">
  <text y="20" font-size="12">sea</text>
</svg>)svg"));
    expectAnOrderlyEnd({"render", text, "-o", test::utf8(out)}, out, 20);
}

// The limit is the process's, so a shell sets it: from where the program starts at all to where it has enough.
TEST_F(Memory, EndsInOrderWithLittleAddressSpace) {
    std::string objects;
    for (int i = 0; i < 60'000; ++i) objects += "<rect width='9' height='9' fill='#123456'/>\n";
    const std::string drawing =
        test::utf8(folder.write("many.svg",
                                "<svg xmlns='http://www.w3.org/2000/svg' width='3000' height='3000'>"
                                "<rect id='first' width='9' height='9' fill='#123456'/>" +
                                    objects + "</svg>"));
    const auto runWithin = [&](int mebibytes, std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {"-c", "ulimit -v $1; shift; exec \"$@\"", "sh",
                                             std::to_string(mebibytes * 1024), test::utf8(test::kzdraw())});
        return test::runProgram("/bin/sh", arguments);
    };
    int least = 8;
    while (runWithin(least, {"--version"}).status != 0) {
        least += 4;
        ASSERT_LT(least, 4096);
    }
    const std::string picture = test::utf8(folder.path() / "out.png"),
                      written = test::utf8(folder.path() / "out.svg");
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"select", drawing, "--same-color-as", "first", "--json"},
          std::vector<std::string>{"view", drawing, "--hide", "#123456", "-o", picture},
          std::vector<std::string>{"view", drawing, "--hide", "#123456", "-o", written}}) {
        const Outcome whole = test::runKzdraw(arguments);
        ASSERT_EQ(whole.status, 0) << whole;
        int refused = 0;
        for (int mebibytes = least; mebibytes < 4096; mebibytes += mebibytes < 128 ? 8 : 64) {
            SCOPED_TRACE(arguments.back() + " within " + std::to_string(mebibytes) + " MiB");
            const Outcome outcome = runWithin(mebibytes, arguments);
            if (outcome == whole) break;
            ++refused;
            if (outcome.status == 0) {  // without the plug-in
                EXPECT_TRUE(isIn("plug-in", outcome.err)) << outcome;
                EXPECT_EQ(outcome.out, whole.out);
                continue;
            }
            EXPECT_EQ(outcome.status, 2) << outcome;
            EXPECT_TRUE(isIn("not enough memory", outcome.err) || isIn("plug-in", outcome.err)) << outcome;
            EXPECT_TRUE(isIn("many.svg", outcome.err) || isIn("plug-in", outcome.err)) << outcome;
        }
        EXPECT_GT(refused, 0);
    }
}

TEST_F(Memory, RunsAScriptOrEndsInOrder) {
    const std::filesystem::path out = folder.path() / "out.svg";
    const std::string script = test::utf8(folder.write(
        "steps.kzs", "open '" + sea +
                         "'\nselect hull\ntool ASelectSimilarTool\ntool AHideThisTool color:red\nundo\n"
                         "print selection\nprint filter\nsave '" +
                         test::utf8(out) + "'\n"));
    expectAnOrderlyEnd({"script", script}, out);
}
