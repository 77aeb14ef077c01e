#include "tests/support/failing_new.h"

namespace {

int allocationsLeft = 0;  // 0: nothing is to fail
bool failed = false;

}  // namespace

AllocationFailure failAllocation(int n) {
    ensureAllocationsAreCounted();
    failed = false;
    allocationsLeft = n;
    return {};
}

AllocationFailure::~AllocationFailure() {
    allocationsLeft = 0;
}

bool AllocationFailure::happened() const {
    return failed;
}

bool allocationFailsNow() {
    if (allocationsLeft == 0 || --allocationsLeft > 0) return false;
    failed = true;
    return true;
}
