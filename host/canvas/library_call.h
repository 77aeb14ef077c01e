// Calls of the libraries that draw and lay out, where memory has run out.
//
// They cannot do without: cairo reads what it could not allocate (a clip's copy, an outline's edges), pango ends the
// process. So a program may keep a reserve: what the system refuses while such a call lasts is met from there, and the
// call ends with an error.
//
//     const ALibraryCall call;
//     cairo_fill(…);
//     ALibraryCall::check();
#pragma once

class ALibraryCall {
public:
    ALibraryCall();
    ~ALibraryCall();
    ALibraryCall(const ALibraryCall&) = delete;
    ALibraryCall& operator=(const ALibraryCall&) = delete;

    // Whether memory was refused since this thread's outermost call began; `check` raises bad_alloc then. Threads are not
    // told apart, as Pango has one of its own.
    static bool lackedMemory();
    static void check();

    // For the program's allocator, which can be asked for memory anywhere: whether the request that the system has just
    // refused is a library's. Notes it.
    static bool noteRefusal();
};
