#include <atomic>
#include <cstdint>
#include <new>
#include <pugixml.hpp>

#include "formats/svg/xml/xml_memory.h"
#include "kzutil/large_memory.h"

namespace svg {

namespace {

// The head of a block. Pieces are cut from its front and never used again; a block is found by rounding the
// address of a piece down, which holds for a piece larger than a block too, as that starts behind its head.
struct alignas(16) Block {
    std::atomic<std::size_t> live;  // pieces in use, and one while it is the block that is being cut
    std::size_t used;
};

// The block that this thread cuts. It outlives the thread: to register a destructor takes memory, and without it the
// process would be ended.
thread_local Block* current = nullptr;

void release(Block* block) {
    if (block != nullptr && block->live.fetch_sub(1, std::memory_order_acq_rel) == 1)
        kzutil::freeLarge(block);
}

Block* makeBlock(std::size_t size) {
    void* const room = kzutil::allocateLarge(size);
    return room != nullptr ? new (room) Block{1, sizeof(Block)} : nullptr;
}

void* allocate(std::size_t size) {
    if (size > kzutil::kLargePage / 4) {
        Block* const own = size <= SIZE_MAX - sizeof(Block) ? makeBlock(sizeof(Block) + size) : nullptr;
        return own != nullptr ? own + 1 : nullptr;
    }
    const std::size_t rounded = (size + alignof(Block) - 1) / alignof(Block) * alignof(Block);
    if (current == nullptr || rounded > kzutil::kLargePage - current->used) {
        Block* const next = makeBlock(kzutil::kLargePage);
        if (next == nullptr) return nullptr;
        release(current);
        current = next;
    }
    Block* const block = current;
    void* const piece = reinterpret_cast<char*>(block) + block->used;
    block->used += rounded;
    block->live.fetch_add(1, std::memory_order_relaxed);
    return piece;
}

void deallocate(void* piece) {
    if (piece == nullptr) return;
    const auto address = reinterpret_cast<std::uintptr_t>(piece);
    release(reinterpret_cast<Block*>(address / kzutil::kLargePage * kzutil::kLargePage));
}

}  // namespace

bool useLargeXmlMemory() {
    pugi::set_memory_management_functions(allocate, deallocate);
    return true;
}

void releaseXmlMemory() {
    release(current);
    current = nullptr;
}

}  // namespace svg
