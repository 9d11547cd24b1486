/* A host that loads the library while it runs, with whatever functions it has itself.
   usage: loader LIBRARY */
#include <dlfcn.h>
#include <stdio.h>

int main(int count, char** arguments) {
    void* const library = count == 2 ? dlopen(arguments[1], RTLD_LAZY | RTLD_LOCAL) : NULL;
    int (*signal_figure)(int) = NULL;

    if (library == NULL) return fprintf(stderr, "%s\n", dlerror()), 1;
    *(void**)&signal_figure = dlsym(library, "mt_rssi_to_pwr");
    if (signal_figure == NULL || signal_figure(-50) != 100 || dlclose(library) != 0) return 1;
    return dlopen(arguments[1], RTLD_LAZY | RTLD_NOLOAD) == NULL ? 0 : 1;
}
