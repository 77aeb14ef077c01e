// Scripts run in this process, on a session with the drawing of sea.h beside it.
#pragma once

#include <gtest/gtest.h>

#include <sstream>

#include "app/output.h"
#include "app/script/interpreter.h"
#include "kzutil/message_box.h"
#include "process.h"
#include "sea.h"
#include "support/temp_folder.h"

namespace test {

class ScriptSession : public testing::Test {
protected:
    TempFolder folder;
    app::Session session;
    std::string failure;  // of the last run

    void SetUp() override {
        takeKeptMessages();
        folder.write("sea.svg", kSea);
    }
    // A line that opens the drawing.
    std::string openSea() const { return "open '" + utf8(folder.path() / "sea.svg") + "'\n"; }
    // What stands before every script of the suite.
    virtual std::string beginning() const { return {}; }
    // What the script, called S, prints.
    std::string run(const std::string& text) {
        std::istringstream script(beginning() + text);
        failure.clear();
        testing::internal::CaptureStdout();
        try {
            app::interpret(session, script, "S");
        } catch (const app::Failure& raised) {
            failure = raised.reason;
        }
        std::string out = testing::internal::GetCapturedStdout();
        std::erase(out, '\r');
        return out;
    }
    std::string runToItsEnd(const std::string& text) {
        const std::string out = run(text);
        EXPECT_EQ(failure, "");
        return out;
    }
    std::string failureOf(const std::string& text) {
        run(text);
        return failure;
    }
};

}  // namespace test
