// The View Filter dialog, used as a user does, on headless and on real controls.
#include <gtest/gtest.h>

#include <random>

#include "dialog_window.h"
#include "support/failing_new.h"

using test::control;
using test::Dialog;
using test::DialogTest;
using test::pressing;
using test::State;
using test::ticks;
using Lines = std::vector<std::string>;

namespace {

const Lines kAllTicked{"RGB Color 3", "RGB Color/red 3", "RGB Color/green 3", "RGB Color/blue 3",
                       "RGB Color/black 3"};

Lines withoutTicks(std::initializer_list<const char*> names) {
    Lines lines = kAllTicked;
    lines[0] = "RGB Color 5";
    for (const char* name : names) {
        const std::string path = std::string("RGB Color/") + name;
        for (std::string& line : lines) {
            if (line == path + " 3") line = path + " 1";
        }
    }
    return lines;
}

using Ticks = Lines;

}  // namespace

TEST_F(DialogTest, ShowsTheClassesInUseWithTheirColors) {
    use({[](Dialog& dialog) {
        const driver::DialogDescription shown = dialog.describe();
        EXPECT_EQ(shown.title, "View Filter");
        EXPECT_EQ(ticks(dialog), kAllTicked);
        EXPECT_TRUE(dialog.tree()[0].expanded);
        EXPECT_EQ(dialog.tree()[0].image, 4) << "an open folder";
        EXPECT_GE(dialog.tree()[0].children[0].image, 6) << "a swatch of its own";
        Lines captions;
        for (const int id : {1066, 1067, IDOK, IDCANCEL}) captions.push_back(control(shown, id).text);
        EXPECT_EQ(captions, (Lines{"Show All", "Show None", "OK", "Cancel"}));
        dialog.press("Cancel");
    }});
}

TEST_F(DialogTest, OpensOnEachStateOfTheFilter) {
    const struct {
        State state;
        Ticks ticks;
    } table[] = {{State::none, kAllTicked},
                 {State::foreign, kAllTicked},
                 {State::allShown, kAllTicked},
                 {State::noneShown, kAllTicked},
                 {State::normal, withoutTicks({"red", "green"})},
                 {State::negative, withoutTicks({"green"})}};
    for (const auto& row : table) {
        set(row.state);
        SCOPED_TRACE(filter());
        Ticks found;
        use({[&](Dialog& dialog) {
            found = ticks(dialog);
            dialog.press("Cancel");
        }});
        EXPECT_EQ(found, row.ticks);
    }
}

TEST_F(DialogTest, OkWithEverythingTickedShowsEverything) {
    for (const State state : {State::none, State::foreign, State::allShown, State::noneShown}) {
        set(state);
        use({pressing("OK")});
        EXPECT_EQ(filter(), "normal show:  hide: ");
        EXPECT_EQ(visible(), " red green blue black");
    }
    EXPECT_EQ(test::ForeignFilter::alive, 0);
}

// It opens all ticked: what it hides is in none of its lists.
TEST_F(DialogTest, OkEndsANegativeFilter) {
    auto negative = std::make_unique<AViewAttrFilter>();
    negative->setUniform(0);
    negative->showCondition(test::on(color("red")).get());
    drawing.view().setViewFilter(negative.release());
    ASSERT_EQ(visible(), " red");
    use({[](Dialog& dialog) {
        EXPECT_EQ(ticks(dialog), kAllTicked);
        dialog.press("OK");
    }});
    EXPECT_EQ(filter(), "normal show:  hide: ");
    EXPECT_EQ(visible(), " red green blue black");
}

TEST_F(DialogTest, OkHidesWhatIsNotTicked) {
    use({[](Dialog& dialog) { dialog.uncheck("RGB Color/red"); }, pressing("OK")});
    EXPECT_EQ(filter(), "normal show: green,blue,black hide: red");
    EXPECT_EQ(visible(), " green blue black");
    use({[](Dialog& dialog) {
             EXPECT_EQ(ticks(dialog), withoutTicks({"red"}));
             dialog.uncheck("RGB Color/black");
         },
         pressing("OK")});
    EXPECT_EQ(filter(), "normal show: green,blue hide: red,black");
    use({[](Dialog& dialog) { dialog.check("RGB Color"); }, pressing("OK")});
    EXPECT_EQ(filter(), "normal show:  hide: ");
}

// A class stands for its colours where it is ticked as a whole, and never where it is not.
TEST_F(DialogTest, OkListsATickedClassAndTheColorsOfAnUntickedOne) {
    drawing.add(object->getParent(), _T("AOval"))->setBrush(drawing.document.getPaint().gradientBrush("sea"));
    use({[](Dialog& dialog) { dialog.uncheck("Gradient"); }, pressing("OK")});
    EXPECT_EQ(filter(), "normal show: [ARGBColorItem] hide: sea");
    use({[](Dialog& dialog) {
             dialog.check("Gradient/sea");
             dialog.uncheck("RGB Color");
         },
         pressing("OK")});
    EXPECT_EQ(filter(), "normal show: [AGradientBrushItem] hide: red,green,blue,black");
    EXPECT_EQ(visible(), "");
}

// The show list wins: hiding a colour by its tool does nothing while the dialog's list shows its class.
TEST_F(DialogTest, AShownClassOutlivesALaterHideOfItsColor) {
    drawing.add(object->getParent(), _T("AOval"))->setBrush(drawing.document.getPaint().gradientBrush("sea"));
    use({[](Dialog& dialog) { dialog.uncheck("Gradient/sea"); }, pressing("OK")});
    ASSERT_EQ(filter(), "normal show: [ARGBColorItem] hide: sea");
    ours().hideCondition(test::on(color("red")).get());
    EXPECT_EQ(filter(), "normal show: [ARGBColorItem] hide: sea,red");
    EXPECT_EQ(visible(), " red green blue black");
    use({[](Dialog& dialog) {
             EXPECT_EQ(ticks(dialog)[1], "RGB Color/red 1") << "the ticks go by the hide list";
         },
         pressing("OK")});
    EXPECT_EQ(visible(), " green blue black");
}

TEST_F(DialogTest, ShowAllAndShowNoneChangeTheTicksAlone) {
    set(State::normal);
    const std::string before = filter();
    use({pressing("Show None"),
         [&](Dialog& dialog) {
             for (const std::string& line : ticks(dialog)) EXPECT_TRUE(line.ends_with(" 1")) << line;
             EXPECT_EQ(filter(), before);
             dialog.press("Show All");
             EXPECT_EQ(ticks(dialog), kAllTicked);
             EXPECT_EQ(filter(), before);
         },
         pressing("Show None"), pressing("OK")});
    EXPECT_EQ(filter(), "normal show:  hide: red,green,blue,black");
    EXPECT_EQ(visible(), "");
}

TEST_F(DialogTest, CancelPutsBackACopyOfTheFilter) {
    for (const State state : {State::allShown, State::noneShown, State::normal, State::negative}) {
        set(state);
        const std::string before = filter();
        const AViewFilter* was = drawing.view().m_viewFilter;
        const std::string seen = visible();
        bool isOther = false;
        use({pressing("Show None"), [&](Dialog& dialog) {
                 EXPECT_EQ(drawing.view().m_viewFilter, was);
                 dialog.cancel();
                 isOther = drawing.view().m_viewFilter != was;
             }});
        EXPECT_TRUE(isOther);
        EXPECT_EQ(filter(), before);
        EXPECT_EQ(visible(), seen);
    }
}

TEST_F(DialogTest, CancelLeavesAViewWithoutAFilterAndTakesAwayAForeignOne) {
    for (const State state : {State::none, State::foreign}) {
        set(state);
        use({pressing("Show None"), pressing("Cancel")});
        EXPECT_EQ(filter(), "none");
    }
    EXPECT_EQ(test::ForeignFilter::alive, 0);
}

TEST_F(DialogTest, KeysEndIt) {
    const auto endWith = [&](int key) {
        set(State::normal);
        use({[](Dialog& dialog) { dialog.uncheck("RGB Color/blue"); },
             [key](Dialog& dialog) { driver::pressKey(::GetDlgItem(dialog.window(), 1059), key); }});
    };
    endWith(VK_ESCAPE);
    EXPECT_EQ(filter(), test::toldStates()[4]);
    endWith(VK_RETURN);
    EXPECT_EQ(filter(), "normal show: black hide: red,green,blue");
}

TEST_F(DialogTest, WhateverTheResultTheToolEndsOnceWithNothingSelectedAndTheViewRedrawn) {
    for (const char* caption : {"OK", "Cancel"}) {
        AViewFilterTool once;
        drawing.select({object});
        const unsigned long long redraws = drawing.view().getRedrawCount();
        {
            driver::Driver user({pressing(caption)});
            EXPECT_EQ(once.onToolStart(), 1);
            EXPECT_TRUE(user.finished());
        }
        EXPECT_TRUE(once.hasEnded());
        EXPECT_EQ(drawing.selected().size(), 0U);
        EXPECT_EQ(drawing.view().getRedrawCount(), redraws + (caption[0] == 'O' ? 2 : 3));
    }
}

TEST_F(DialogTest, TicksSurviveOk) {
    drawing.add(object->getParent(), _T("AOval"))->setBrush(drawing.document.getPaint().gradientBrush("sea"));
    const char* const kPaths[] = {"RGB Color/red", "RGB Color/green", "RGB Color/blue", "RGB Color/black",
                                  "Gradient/sea"};
    std::mt19937 random(12);
    for (int i = 0; i < 12; ++i) {
        Ticks chosen;
        use({[&](Dialog& dialog) {
                 for (const char* path : kPaths) {
                     if (random() % 2 == 0) dialog.click(path);
                 }
                 chosen = ticks(dialog);
             },
             pressing("OK")});
        use({[&](Dialog& dialog) { EXPECT_EQ(ticks(dialog), chosen); }, pressing(i % 2 ? "OK" : "Cancel")});
    }
}

TEST_F(DialogTest, UndoAndRedoStepOverItsResult) {
    registerAttributeFilter();
    AHistory& history = drawing.view().getHistory();
    history.begin();
    use({[](Dialog& dialog) { dialog.uncheck("RGB Color/red"); }, pressing("OK")});
    EXPECT_TRUE(history.end());
    history.begin();
    use({pressing("Cancel")});
    EXPECT_FALSE(history.end()) << "a copy is no change";
    EXPECT_TRUE(history.undo());
    EXPECT_EQ(filter(), "none");
    EXPECT_TRUE(history.redo());
    EXPECT_EQ(filter(), "normal show: green,blue,black hide: red");
    unregisterAttributeFilter();
}

TEST_F(DialogTest, EqualPathsAndUnnamedBrushesAreItemsOfTheirOwn) {
    const auto unnamed = test::makeGradient(_T(""));
    const auto other = test::makeColor(_T("red"), RGB(254, 0, 0));
    const auto solid = test::makeSolid(other.get());
    ABrush unnamedBrush(unnamed.get()), otherBrush(solid.get());
    drawing.add(object->getParent(), _T("AOval"))->setBrush(&unnamedBrush);
    drawing.add(object->getParent(), _T("AOval"))->setBrush(&otherBrush);
    use({[](Dialog& dialog) {
             const Lines lines = ticks(dialog);
             ASSERT_EQ(lines.size(), 8U);
             EXPECT_EQ(lines[5], "RGB Color/red_1 3");
             EXPECT_EQ(lines[7].find("Gradient/brush"), 0U) << lines[7];
             dialog.uncheck("RGB Color/red_1");
             dialog.uncheck(lines[7].substr(0, lines[7].size() - 2));
         },
         pressing("OK")});
    EXPECT_FALSE(ours().isVisible(other.get()));
    EXPECT_FALSE(ours().isVisible(unnamed.get()));
    EXPECT_EQ(visible(), " red green blue black");
}

TEST_F(DialogTest, TheToolTakesTheFilterAwayToShowEverything) {
    const AObArray none;
    tool.applyFilter(none, none, 1, 0);
    EXPECT_EQ(filter(), "none") << "showing everything needs no filter";
    tool.applyFilter(none, none, 1, 1);
    EXPECT_EQ(filter(), "none shown");
    const AViewFilter* kept = drawing.view().m_viewFilter;
    tool.applyFilter(none, none, 0, 1);
    EXPECT_EQ(filter(), "negative show:  hide: ");
    EXPECT_EQ(drawing.view().m_viewFilter, kept) << "changed in place";
    tool.applyFilter(none, none, 1, 0);
    EXPECT_EQ(filter(), "none");
}

TEST_F(DialogTest, WithoutMemoryForAFilterTheViewHasNone) {
    set(State::foreign);
    const AObArray none;
    {
        const AllocationFailure failing = failAllocation(1);
        tool.applyFilter(none, none, 0, 0);
        EXPECT_TRUE(failing.happened());
    }
    EXPECT_EQ(filter(), "none");
    EXPECT_EQ(test::ForeignFilter::alive, 0);
}

TEST_F(DialogTest, WithoutAViewAFilterThatIsHandedOverGoes) {
    drawing.application.setActiveView(nullptr);
    tool.replaceFilter(new test::ForeignFilter);
    EXPECT_EQ(test::ForeignFilter::alive, 0);
}

TEST_F(DialogTest, AMissingViewIsNoHarm) {
    drawing.application.setActiveView(nullptr);
    use({pressing("OK")});
    use({pressing("Cancel")});
    EXPECT_EQ(tool.isValid(), 0);
}

// Wherever memory runs out, the view has the filter of before or that of OK, and nothing is lost.
TEST_F(DialogTest, RunningOutOfMemoryLeavesTheOldFilterOrTheNew) {
    const std::string old = test::toldStates()[4];
    int failures = 0;
    for (int n = 1;; n += 1 + n / 6) {
        set(State::normal);
        driver::Driver user({pressing("Show None"), pressing("OK")});
        const AllocationFailure failing = failAllocation(n);
        try {
            tool.onToolStart();
        } catch (const std::bad_alloc&) {
        }
        if (!failing.happened()) break;
        ++failures;
        const std::string now = filter();
        EXPECT_TRUE(now == old || now == "normal show:  hide: red,green,blue,black") << n << ": " << now;
    }
    EXPECT_GT(failures, 10);
}
