// The drawings that were opened last, kept in the preferences.
#pragma once

#include <string>
#include <vector>

#include "kzutil/root.h"

namespace app::window {

// As the program finds it from whichever folder it is started in.
std::string wholeName(const std::string& file);

class RecentFiles : public ARoot {
public:
    static constexpr std::size_t kMost = 9;  // as there are digits for them in a menu

    // Reads what is stored; nothing, when that cannot be read.
    void read();
    // Puts the file in front and stores the list. A relative name is kept as a whole one.
    void add(const std::string& file);
    // The file is gone.
    void remove(const std::string& file);

    // Newest first.
    const std::vector<std::string>& files() const { return m_files; }

    const AString& getClassName() const override;
    int orbiSerialize(AArchive& archive) override;

private:
    std::vector<std::string> m_files;
};

}  // namespace app::window
