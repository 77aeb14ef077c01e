#include "canvas/library_call.h"

#include <atomic>
#include <new>

namespace {

std::atomic<int> calls = 0;
std::atomic<unsigned> refusals = 0;
thread_local int depth = 0;
thread_local unsigned refusalsBefore = 0;

}  // namespace

ALibraryCall::ALibraryCall() {
    ++calls;
    if (depth++ == 0) refusalsBefore = refusals;
}

ALibraryCall::~ALibraryCall() {
    --depth;
    --calls;
}

bool ALibraryCall::lackedMemory() {
    return refusals != refusalsBefore;
}

void ALibraryCall::check() {
    if (lackedMemory()) throw std::bad_alloc();
}

bool ALibraryCall::noteRefusal() {
    if (calls == 0) return false;
    ++refusals;
    return true;
}
