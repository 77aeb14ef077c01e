// The program's allocator: the system's, with a reserve for the libraries that cannot do without (canvas/library_call.h).
//
// A definition of the program goes before the system's for every library that it loads, so the requests of all of them
// come here. The reserve takes room among the addresses alone until something is written to it.
#include <dlfcn.h>
#include <malloc.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdint>
#include <cstring>

#include "canvas/library_call.h"

namespace {

// An outline's edges are the most that is asked for: of some fifty thousand they take as much.
constexpr std::size_t kReserve = std::size_t{8} << 20;
constexpr std::size_t kAlignment = 16;

alignas(kAlignment) char reserve[kReserve];

class Lock {
public:
    Lock() {
        while (s_flag.test_and_set(std::memory_order_acquire)) {
        }
    }
    ~Lock() { s_flag.clear(std::memory_order_release); }
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;

private:
    static inline std::atomic_flag s_flag;
};

std::size_t used = 0;    // of the reserve, from its start; under the lock
std::size_t blocks = 0;  // that have not been given back

bool isReserved(const void* block) {
    const auto at = reinterpret_cast<std::uintptr_t>(block);
    const auto first = reinterpret_cast<std::uintptr_t>(reserve);
    return at >= first && at < first + kReserve;
}

// Stands before each block.
std::size_t& sizeOf(void* block) {
    return *reinterpret_cast<std::size_t*>(static_cast<char*>(block) - kAlignment);
}

// Null when the reserve is used up, too.
void* take(std::size_t size, std::size_t alignment = kAlignment) {
    const Lock lock;
    const auto start = reinterpret_cast<std::uintptr_t>(reserve);
    const std::size_t at = ((start + used + kAlignment + alignment - 1) & ~(alignment - 1)) - start;
    if (at > kReserve || size > kReserve - at) return nullptr;
    used = std::min(kReserve, (at + size + kAlignment - 1) & ~(kAlignment - 1));
    ++blocks;
    sizeOf(reserve + at) = size;
    return reserve + at;
}

void giveBack() {
    const Lock lock;
    if (--blocks == 0) used = 0;
}

void* takeForLibrary(std::size_t size, std::size_t alignment = kAlignment) {
    return ALibraryCall::noteRefusal() ? take(size, alignment) : nullptr;
}

// The definitions behind the program's. Looking for them may ask for memory itself.
struct System {
    void* (*malloc)(std::size_t);
    void* (*calloc)(std::size_t, std::size_t);
    void* (*realloc)(void*, std::size_t);
    void (*free)(void*);
    int (*posixMemalign)(void**, std::size_t, std::size_t);
};

const System* findSystem() {
    static System found{};
    static enum { unknown, looking, known } state = unknown;
    if (state == unknown) {
        state = looking;
        const auto find = [](auto& function, const char* name) {
            function = reinterpret_cast<std::remove_reference_t<decltype(function)>>(dlsym(RTLD_NEXT, name));
        };
        find(found.calloc, "calloc");
        find(found.realloc, "realloc");
        find(found.free, "free");
        find(found.posixMemalign, "posix_memalign");
        find(found.malloc, "malloc");
        state = known;
    }
    return state == known ? &found : nullptr;
}

}  // namespace

extern "C" {

void* malloc(std::size_t size) noexcept {
    const System* system = findSystem();
    if (!system) return take(size);
    void* const got = system->malloc(size);
    return got ? got : takeForLibrary(size);
}

void* calloc(std::size_t count, std::size_t size) noexcept {
    const System* system = findSystem();
    if (void* const got = system ? system->calloc(count, size) : nullptr) return got;
    if (size != 0 && count > kReserve / size) return nullptr;
    void* const block = system ? takeForLibrary(count * size) : take(count * size);
    return block ? std::memset(block, 0, count * size) : nullptr;
}

void free(void* block) noexcept {
    if (isReserved(block))
        giveBack();
    else if (const System* system = findSystem())
        system->free(block);
}

void* realloc(void* old, std::size_t size) noexcept {
    const bool wasReserved = old && isReserved(old);
    if (!wasReserved) {
        const System* system = findSystem();
        void* const got = system ? system->realloc(old, size) : nullptr;
        if (got || size == 0) return got;
    }
    void* const block = wasReserved ? malloc(size) : takeForLibrary(size);
    if (!block || !old) return block;
    std::memcpy(block, old, std::min(size, wasReserved ? sizeOf(old) : malloc_usable_size(old)));
    free(old);
    return block;
}

int posix_memalign(void** result, std::size_t alignment, std::size_t size) noexcept {
    const System* system = findSystem();
    const int failed = system ? system->posixMemalign(result, alignment, size) : ENOMEM;
    if (failed != ENOMEM) return failed;
    *result = takeForLibrary(size, std::max(alignment, kAlignment));
    return *result ? 0 : ENOMEM;
}
}
