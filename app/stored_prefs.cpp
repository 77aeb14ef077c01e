#include "app/stored_prefs.h"

#include "app/session.h"
#include "kzutil/archive.h"
#include "kzutil/preference_manager.h"

namespace app {

namespace {

// The record of the View Filter dialog's geometry, which the plug-in writes:
//
//   tag 0   the base's record
//   tag 1   i32 width, i32 height
//   tag 2   i32 left, i32 top
class DialogGeometry : public ARoot {
public:
    int width = 0, height = 0, left = 0, top = 0;

    const AString& getClassName() const override {
        static const AString name(_T("AViewFilterPrefs"));
        return name;
    }

    int orbiSerialize(AArchive& archive) override {
        archive.TagStart();
        archive.Tag(0);
        if (ARoot::orbiSerialize(archive) == 0) return 0;
        exchange(archive, 1, width, height);
        exchange(archive, 2, left, top);
        archive.TagEnd();
        return 1;
    }

private:
    static void exchange(AArchive& archive, BYTE tag, int& a, int& b) {
        archive.Tag(tag);
        if (archive.isLoading())
            archive >> a >> b;
        else
            archive << a << b;
    }
};

}  // namespace

nlohmann::ordered_json reportPrefs() {
    DialogGeometry stored;
    std::string problem;
    nlohmann::ordered_json fields;
    if (APreferenceManager::readPrefs(&stored, problem)) {
        fields = {
            {"width", stored.width}, {"height", stored.height}, {"left", stored.left}, {"top", stored.top}};
    } else if (!problem.empty()) {
        throw Failure{problem};
    }
    return {{"prefs", {{stored.getClassName().toUtf8(), fields}}}};
}

}  // namespace app
