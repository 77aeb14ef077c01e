// APreferenceManager: what objects remember from one run of the host to the next.
//
//     AViewFilterPrefs prefs(&dialog);
//     APreferenceManager::readPrefs(&prefs);    // as it is when nothing was stored
//     APreferenceManager::writePrefs(&prefs);
//
// One file for each class, called after it, in the folder that the host names; until it names one, nothing is
// stored and nothing is read. A file is replaced as a whole: a program that is killed while it writes leaves
// the old one, and of several programs the last one wins.
//
// Nothing here raises an exception: callers are destructors, and go on without preferences.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "kzutil/root.h"

class APreferenceManager {
public:
    // Runs the object's orbiSerialize on a loading archive, when preferences of its class are stored: 1. Else
    // 0, and the object is as it was, whatever the file holds. `problem`: empty when nothing is stored, else
    // "FILE: reason".
    //
    // Puts the object back through its own orbiSerialize, so it has to store whatever it loads.
    static int readPrefs(ARoot* object) noexcept;
    static int readPrefs(ARoot* object, std::string& problem) noexcept;

    // Runs the object's orbiSerialize on a storing archive and keeps the result in place of what was stored
    // for its class: 1. Else 0, and what was stored before is there still.
    static int writePrefs(ARoot* object) noexcept;

    // Forgets what is stored for every class. What cannot be removed stays; false then, with "FILE: reason".
    static bool removePrefs(std::string& problem);

    // Where the files are; made when first needed. Empty: nowhere.
    static void setFolder(const std::filesystem::path& folder);
    static const std::filesystem::path& getFolder();
};
