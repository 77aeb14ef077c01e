#include "viewfilter/view_filter_prefs.h"

const AString AViewFilterPrefs::className(_T("AViewFilterPrefs"));
