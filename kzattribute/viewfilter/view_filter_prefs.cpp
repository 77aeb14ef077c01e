#include "viewfilter/view_filter_prefs.h"

#include "kzcore/document/config.h"
#include "kzutil/archive.h"
#include "kzutil/preference_manager.h"
#include "viewfilter/view_filter_dialog.h"

// Layout: a tagged record (see archive.cpp). Sizes and positions are in pixels of the screen.
//
//   tag  content
//   0    the base's record
//   1    i32 width, i32 height; -1: the template's
//   2    i32 left, i32 top

namespace {

constexpr BYTE kBaseTag = 0, kSizeTag = 1, kPositionTag = 2;

void exchange(AArchive& archive, BYTE tag, int& first, int& second) {
    archive.Tag(tag);
    if (archive.isLoading())
        archive >> first >> second;
    else
        archive << first << second;
}

}  // namespace

const AString& AViewFilterPrefs::getClassName() const {
    static const AString name(className);
    return name;
}

AViewFilterPrefs::AViewFilterPrefs(AViewFilterDialog* dialog) : m_dialog(dialog) {
    m_dialog->m_width = m_dialog->m_height = -1;
    m_dialog->m_left = m_dialog->m_top = 100;
    APreferenceManager::readPrefs(this);
}

AViewFilterPrefs::~AViewFilterPrefs() {
    if (AConfig::m_BackupSettingsOnOff) APreferenceManager::writePrefs(this);
}

int AViewFilterPrefs::orbiSerialize(AArchive& archive) {
    archive.TagStart();
    archive.Tag(kBaseTag);
    if (ARoot::orbiSerialize(archive) == 0) return 0;
    exchange(archive, kSizeTag, m_dialog->m_width, m_dialog->m_height);
    exchange(archive, kPositionTag, m_dialog->m_left, m_dialog->m_top);
    archive.TagEnd();
    return 1;
}
