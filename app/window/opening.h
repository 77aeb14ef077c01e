// Opening: a drawing on its way, read in a thread of its own, its display list made.
//
//     Opening opening("harbour.svg", [&] { … });   // from the thread: it is done
//     while (!opening.waitFor(100ms)) … opening.progress() …
//     Opened opened = opening.take();              // or raises why not
#pragma once

#include <chrono>
#include <condition_variable>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

#include "formats/svg/reader.h"
#include "kzcore/display/display_list.h"

namespace app::window {

struct Opened {
    std::unique_ptr<ADocument> document;
    std::shared_ptr<const ADisplayList> list;
};

class Opening {
public:
    // Raises Failure for a name that no file can have.
    Opening(const std::string& file, std::function<void()> done);
    // Cancels what is not done.
    ~Opening();
    Opening(const Opening&) = delete;
    Opening& operator=(const Opening&) = delete;

    // True once it is done, or failed.
    bool waitFor(std::chrono::milliseconds time);
    double progress() const { return m_reading.done; }  // of 1
    void cancel() { m_reading.cancelled = true; }
    bool isCancelled() const { return m_reading.cancelled; }

    // Once, after it is done. Raises Failure with the reason, and bad_alloc.
    Opened take();

private:
    void read(const std::filesystem::path& file);

    svg::ReadingWatch m_reading;
    Opened m_opened;
    std::string m_error;
    std::exception_ptr m_failure;
    const std::function<void()> m_done;

    std::mutex m_mutex;  // guards what follows
    std::condition_variable m_changed;
    bool m_isDone = false;

    std::thread m_thread;
};

}  // namespace app::window
