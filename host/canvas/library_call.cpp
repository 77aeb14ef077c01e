#include "canvas/library_call.h"

#include <new>

namespace {

thread_local int depth = 0;
thread_local bool wasRefused = false;

}  // namespace

ALibraryCall::ALibraryCall() {
    if (depth++ == 0) wasRefused = false;
}

ALibraryCall::~ALibraryCall() {
    --depth;
}

bool ALibraryCall::lackedMemory() {
    return wasRefused;
}

void ALibraryCall::check() {
    if (wasRefused) throw std::bad_alloc();
}

bool ALibraryCall::noteRefusal() {
    if (depth == 0) return false;
    wasRefused = true;
    return true;
}
