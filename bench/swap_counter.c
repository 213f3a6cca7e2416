/* Counts the frames a program shows: preloaded in front of SDL, it wraps
 * SDL_GL_SwapWindow and keeps the running count in a small file mapped into
 * memory (named by SWAP_COUNTER_FILE), so counting costs no system call. */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <fcntl.h>
#include <stdint.h>
#include <stdlib.h>
#include <sys/mman.h>
#include <unistd.h>

static volatile uint64_t* counter;

static void open_counter(void) {
    const char* path = getenv("SWAP_COUNTER_FILE");
    if (!path) return;
    int fd = open(path, O_RDWR | O_CREAT, 0644);
    if (fd < 0) return;
    if (ftruncate(fd, sizeof(uint64_t)) == 0) {
        void* p = mmap(NULL, sizeof(uint64_t), PROT_READ | PROT_WRITE, MAP_SHARED, fd, 0);
        if (p != MAP_FAILED) counter = (volatile uint64_t*)p;
    }
    close(fd);
}

void SDL_GL_SwapWindow(void* window) {
    static void (*real)(void*);
    static int opened;
    if (!real) real = (void (*)(void*))dlsym(RTLD_NEXT, "SDL_GL_SwapWindow");
    if (!opened) {
        opened = 1;
        open_counter();
    }
    if (counter) *counter += 1;
    if (real) real(window);
}
