#include "app/commands/drawings.h"

#include <unistd.h>

#include <cstdio>
#include <memory>
#include <new>

#include "app/plug_ins.h"
#include "app/session.h"

namespace app {

namespace {

// A line on a terminal that tells how far a run is; nothing where standard error is something else.
class Progress {
public:
    explicit Progress(std::size_t total) : m_total(total), m_isShown(isatty(fileno(stderr)) != 0) {}
    ~Progress() { clear(); }
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    void show(std::size_t done, std::size_t failed) {
        if (!m_isShown || done == 0 || done == m_total) return;
        std::string line = std::to_string(done) + " of " + std::to_string(m_total) + " drawings";
        if (failed > 0) line += ", " + std::to_string(failed) + " failed";
        std::fprintf(stderr, "\r%s", line.c_str());
        std::fflush(stderr);
        m_length = line.size();
    }
    // To be called before anything else is written.
    void clear() {
        if (m_length == 0) return;
        std::fprintf(stderr, "\r%*s\r", static_cast<int>(m_length), "");
        std::fflush(stderr);
        m_length = 0;
    }

private:
    std::size_t m_total;
    bool m_isShown;
    std::size_t m_length = 0;  // of the line that stands there
};

// Of a drawing: what it printed, or why it failed.
struct Answer {
    int status = 2;
    std::string text;
    std::string reason;
};

Answer answerOf(const std::string& file, bool json, std::size_t index,
                const std::function<int(std::size_t)>& work) {
    Answer answer;
    try {
        const PrintedText printed(answer.text);
        answer.status = work(index);
        return answer;
    } catch (const Failure& failure) {
        answer.reason = failure.reason;
    } catch (const std::bad_alloc&) {
        answer.reason = file + ": not enough memory";
    }
    answer.text.clear();  // half of it would be no line of JSON
    if (json) {
        const PrintedText printed(answer.text);
        printJson({{"file", file}, {"error", answer.reason}});
    }
    return answer;
}

}  // namespace

int onEachDrawing(const std::vector<std::string>& files, bool json,
                  const std::function<int(std::size_t)>& work) {
    if (files.size() == 1) return work(0);
    const std::shared_ptr<const PlugIns> plugIns = PlugIns::loaded();  // once for all of them
    Progress progress(files.size());
    std::size_t failed = 0;
    int status = 1;
    for (std::size_t i = 0; i < files.size(); ++i) {
        progress.show(i, failed);
        const Answer answer = answerOf(files[i], json, i, work);
        progress.clear();
        if (!answer.reason.empty()) printError(answer.reason);
        print(answer.text);
        flushOutput();
        if (answer.status == 0) status = 0;
        if (!answer.reason.empty()) ++failed;
    }
    if (failed > 0) {
        throw Failure{std::to_string(failed) + " of " + std::to_string(files.size()) +
                      (failed == 1 ? " drawings has failed" : " drawings have failed")};
    }
    return status;
}

nlohmann::ordered_json headOf(const std::vector<std::string>& files, const std::string& file) {
    nlohmann::ordered_json head = nlohmann::ordered_json::object();
    if (files.size() > 1) head["file"] = file;
    return head;
}

std::string leadOf(const std::vector<std::string>& files, const std::string& file) {
    return files.size() > 1 ? file + ": " : std::string();
}

}  // namespace app
