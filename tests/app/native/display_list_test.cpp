// What does not draw makes no display list: in this process the making of lists is counted.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include "app/commands/commands.h"
#include "app/process.h"
#include "app/sea.h"
#include "kzcore/display/display_list.h"
#include "support/temp_folder.h"

namespace {

int madeLists = 0;

// How many lists a command makes.
template <class Run>
int listsOf(Run run) {
    madeLists = 0;
    testing::internal::CaptureStdout();
    EXPECT_EQ(run(), 0);
    testing::internal::GetCapturedStdout();
    return madeLists;
}

}  // namespace

// In place of the library's, which it calls.
std::shared_ptr<const ADisplayList> makeDisplayList(ADocument& document) {
    using Make = std::shared_ptr<const ADisplayList> (*)(ADocument&);
    static const Make make = reinterpret_cast<Make>(dlsym(RTLD_NEXT, "_Z15makeDisplayListR9ADocument"));
    ++madeLists;
    return make(document);
}

TEST(ADisplayListOfTheProgram, IsMadeByWhatDrawsAlone) {
    const test::TempFolder folder;
    const std::string sea = test::utf8(folder.write("sea.svg", test::kSea));
    app::SelectOptions select;
    select.files = {sea};
    select.reference = "sun";
    for (const app::SelectBy by : {app::SelectBy::similarObjects, app::SelectBy::color}) {
        select.by = by;
        EXPECT_EQ(listsOf([&] { return app::runSelect(select); }), 0);
    }
    select.by = app::SelectBy::attributes;
    select.where = {"Fill/Solid"};
    EXPECT_EQ(listsOf([&] { return app::runSelect(select); }), 0);
    EXPECT_EQ(listsOf([&] { return app::runInfo({{sea}}); }), 0);
    EXPECT_EQ(listsOf([&] { return app::runTools(sea, false); }), 0);
    EXPECT_EQ(listsOf([&] { return app::runAttributes(sea, false); }), 0);

    app::RenderOptions render;
    render.files = {sea};
    render.out = test::utf8(folder.path() / "sea.png");
    EXPECT_EQ(listsOf([&] { return app::runRender(render); }), 1);
}
