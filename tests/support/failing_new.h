// Allocation failure on demand: the Nth operator new from now fails, in whichever module of the process it is
// called.
//
//     for (int n = 1;; ++n) {
//         const AllocationFailure failing = failAllocation(n);
//         …                                  // throws bad_alloc, or gets null from new (nothrow)
//         if (!failing.happened()) break;    // the code got through with fewer than n allocations
//     }
//
// One at a time, and on one thread. Only the Nth fails; those behind it succeed again. Link the object
// library kz_failing_new; on Windows it counts the runtime library's malloc, which its operator new calls, so
// that an exception's own memory counts there too.
#pragma once

class AllocationFailure {
public:
    AllocationFailure(const AllocationFailure&) = delete;
    AllocationFailure& operator=(const AllocationFailure&) = delete;
    ~AllocationFailure();

    bool happened() const;

private:
    friend AllocationFailure failAllocation(int n);
    AllocationFailure() = default;
};

[[nodiscard]] AllocationFailure failAllocation(int n);

// For the replaced allocators: counts one, and says whether it is the one to fail.
bool allocationFailsNow();

// Puts the counting allocators in place; called by failAllocation.
void ensureAllocationsAreCounted();
