#include "canvas/library_call.h"

#include <atomic>
#include <new>

namespace {

std::atomic<int> libraryCalls = 0;
std::atomic<unsigned> memoryRefusals = 0;
thread_local int callDepth = 0;
thread_local unsigned refusalsBeforeCall = 0;

}  // namespace

ALibraryCall::ALibraryCall() {
    ++libraryCalls;
    if (callDepth++ == 0) refusalsBeforeCall = memoryRefusals;
}

ALibraryCall::~ALibraryCall() {
    --callDepth;
    --libraryCalls;
}

bool ALibraryCall::lackedMemory() {
    return memoryRefusals != refusalsBeforeCall;
}

void ALibraryCall::check() {
    if (lackedMemory()) throw std::bad_alloc();
}

bool ALibraryCall::noteRefusal() {
    if (libraryCalls == 0) return false;
    ++memoryRefusals;
    return true;
}
