#include <algorithm>
#include <map>
#include <system_error>

#include "app/commands/drawings.h"
#include "app/session.h"

namespace app {

namespace {

namespace fs = std::filesystem;

std::string utf8(const fs::path& path) {
    const std::u8string text = path.generic_u8string();
    return {text.begin(), text.end()};
}

std::string fill(const std::string& pattern, const std::string& file) {
    const fs::path path = filePath(file);
    const std::string folder = path.has_parent_path() ? utf8(path.parent_path()) : ".";
    const std::pair<std::string_view, std::string> values[] = {{"{name}", utf8(path.stem())},
                                                               {"{folder}", folder}};
    std::string name;
    for (std::size_t at = 0; at < pattern.size();) {
        const std::string_view rest = std::string_view(pattern).substr(at);
        const auto* const value =
            std::ranges::find_if(values, [&](const auto& one) { return rest.starts_with(one.first); });
        const bool isPlain = value == std::end(values);
        name += isPlain ? rest.substr(0, 1) : std::string_view(value->second);
        at += isPlain ? 1 : value->first.size();
    }
    return name;
}

// The same for every name of a file, so far as that can be told before it is there. The case of ASCII letters counts on no
// build: some folders ignore it, and a name that differs in nothing else confuses people, too.
std::string placeOf(const std::string& file) {
    std::error_code ignored;
    const fs::path path = filePath(file);
    fs::path place = fs::weakly_canonical(path, ignored);
    if (ignored) place = fs::absolute(path, ignored).lexically_normal();
    std::string text = utf8(place);
    for (char& c : text) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    return text;
}

}  // namespace

std::vector<std::string> outputNames(const std::vector<std::string>& files, const std::string& pattern) {
    std::vector<std::string> names;
    names.reserve(files.size());
    for (const std::string& file : files) names.push_back(fill(pattern, file));
    if (files.size() == 1) return names;
    if (pattern.find("{name}") == pattern.npos)
        throw Failure{pattern +
                      ": several drawings need several names: write {name} where the drawing's stands"};
    std::map<std::string, std::size_t> drawings, written;
    for (std::size_t i = 0; i < files.size(); ++i) drawings.emplace(placeOf(files[i]), i);
    for (std::size_t i = 0; i < files.size(); ++i) {
        const std::string place = placeOf(names[i]);
        const auto [other, isNew] = written.emplace(place, i);
        if (!isNew) {
            throw Failure{names[i] + ": both " + files[other->second] + " and " + files[i] +
                          " would be written to it"};
        }
        const auto drawing = drawings.find(place);
        if (drawing != drawings.end() && drawing->second != i)
            throw Failure{names[i] + ": " + files[i] + " would be written over the drawing of this name"};
    }
    return names;
}

}  // namespace app
