/* Put before a program's libraries: from main on, the KZ_FAIL_AT-th request for memory fails, and every later one too
   unless KZ_FAIL_ONCE is set. With KZ_COUNT_TO, a file, the number of requests is written there. */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <errno.h>
#include <stdio.h>
#include <stdlib.h>
#include <unistd.h>

void* __libc_malloc(size_t size);
void* __libc_calloc(size_t count, size_t size);
void* __libc_realloc(void* old, size_t size);
void* __libc_memalign(size_t alignment, size_t size);

typedef int Main(int, char**, char**);
typedef void Function(void);

static Main* real_main;
static int is_counting;
static int fails_once;
static long requests;
static long failing;

static int fails(void) {
    if (!is_counting) return 0;
    const long number = __atomic_add_fetch(&requests, 1, __ATOMIC_RELAXED);
    if (failing == 0 || number < failing || (fails_once && number > failing)) return 0;
    errno = ENOMEM;
    return 1;
}

void* malloc(size_t size) {
    return fails() ? NULL : __libc_malloc(size);
}
void* calloc(size_t count, size_t size) {
    return fails() ? NULL : __libc_calloc(count, size);
}
void* realloc(void* old, size_t size) {
    return fails() ? NULL : __libc_realloc(old, size);
}
void* aligned_alloc(size_t alignment, size_t size) {
    return fails() ? NULL : __libc_memalign(alignment, size);
}
int posix_memalign(void** result, size_t alignment, size_t size) {
    *result = fails() ? NULL : __libc_memalign(alignment, size);
    return *result != NULL ? 0 : ENOMEM;
}

static int counted_main(int count, char** arguments, char** environment) {
    const char* at = getenv("KZ_FAIL_AT");
    const char* told = getenv("KZ_COUNT_TO");
    failing = at != NULL ? atol(at) : 0;
    fails_once = getenv("KZ_FAIL_ONCE") != NULL;
    is_counting = 1;
    const int status = real_main(count, arguments, environment);
    is_counting = 0;
    FILE* file = told != NULL ? fopen(told, "w") : NULL;
    if (file != NULL) {
        fprintf(file, "%ld\n", requests);
        fclose(file);
    }
    return status;
}

int __libc_start_main(Main* program, int count, char** arguments, Function* init, Function* fini,
                      Function* unload, void* stack_end) {
    typedef int Start(Main*, int, char**, Function*, Function*, Function*, void*);
    Start* start = (Start*)dlsym(RTLD_NEXT, "__libc_start_main");
    real_main = program;
    return start(counted_main, count, arguments, init, fini, unload, stack_end);
}
