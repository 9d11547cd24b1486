#include "tests/support/library_hook.h"

#include <dlfcn.h>
#include <link.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

namespace harness {
namespace {

struct Import {
    std::string_view name;
    void** slot;
};

// The slots were made read-only when the library was loaded.
void make_writable(void** slot) {
    const auto page_size = static_cast<uintptr_t>(sysconf(_SC_PAGESIZE));
    const auto page = reinterpret_cast<uintptr_t>(slot) & ~(page_size - 1);
    if (mprotect(reinterpret_cast<void*>(page), page_size, PROT_READ | PROT_WRITE) == 0) return;
    std::perror("mprotect");
    std::abort();
}

ElfW(Addr) dynamic_value(const link_map* library, ElfW(Sxword) tag) {
    for (const ElfW(Dyn)* entry = library->l_ld; entry->d_tag != DT_NULL; ++entry)
        if (entry->d_tag == tag) return entry->d_un.d_ptr;
    return 0;
}

std::vector<Import> read_imports() {
    std::vector<Import> imports;
    void* const handle = dlopen("libplatform.so.1", RTLD_NOW | RTLD_NOLOAD);
    link_map* library = nullptr;
    if (handle == nullptr || dlinfo(handle, RTLD_DI_LINKMAP, &library) != 0) std::abort();
    const auto* symbols = reinterpret_cast<ElfW(Sym)*>(dynamic_value(library, DT_SYMTAB));
    const auto* names = reinterpret_cast<const char*>(dynamic_value(library, DT_STRTAB));
    for (const auto& [table, size] : {
             std::pair(DT_RELA, DT_RELASZ), {DT_JMPREL, DT_PLTRELSZ}
    }) {
        const auto* entry = reinterpret_cast<ElfW(Rela)*>(dynamic_value(library, table));
        const auto* end = entry + dynamic_value(library, size) / sizeof *entry;
        for (; entry != end; ++entry) {
            const ElfW(Sym)& symbol = symbols[ELF64_R_SYM(entry->r_info)];
            if (symbol.st_name == 0 || symbol.st_shndx != SHN_UNDEF) continue;
            auto* const slot = reinterpret_cast<void**>(library->l_addr + entry->r_offset);
            make_writable(slot);
            imports.push_back({names + symbol.st_name, slot});
        }
    }
    dlclose(handle);
    return imports;
}

}  // namespace

void LibraryHook::divert(std::string_view name, void* replacement) {
    static const std::vector<Import> imports = read_imports();
    for (const Import& import : imports) {
        if (import.name != name) continue;
        originals_.emplace_back(import.slot, *import.slot);
        *import.slot = replacement;
    }
}

LibraryHook::~LibraryHook() {
    for (const auto& [slot, original] : originals_) *slot = original;
}

}  // namespace harness
