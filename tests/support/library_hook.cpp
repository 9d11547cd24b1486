#include "support/library_hook.h"

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

// What the dynamic section of a loaded library says about its relocations.
struct Relocations {
    const ElfW(Sym) * symbols = nullptr;
    const char* names = nullptr;
    const ElfW(Rela) * data = nullptr;
    size_t data_size = 0;
    const ElfW(Rela) * calls = nullptr;
    size_t calls_size = 0;
};

Relocations read_dynamic_section(const ElfW(Dyn) * entry) {
    Relocations found;
    for (; entry->d_tag != DT_NULL; ++entry) {
        const auto address = entry->d_un.d_ptr;
        switch (entry->d_tag) {
            case DT_SYMTAB:
                found.symbols = reinterpret_cast<const ElfW(Sym)*>(address);
                break;
            case DT_STRTAB:
                found.names = reinterpret_cast<const char*>(address);
                break;
            case DT_RELA:
                found.data = reinterpret_cast<const ElfW(Rela)*>(address);
                break;
            case DT_RELASZ:
                found.data_size = entry->d_un.d_val;
                break;
            case DT_JMPREL:
                found.calls = reinterpret_cast<const ElfW(Rela)*>(address);
                break;
            case DT_PLTRELSZ:
                found.calls_size = entry->d_un.d_val;
                break;
            default:
                break;
        }
    }
    return found;
}

// The slots were made read-only when the library was loaded.
void make_writable(ElfW(Addr) start, size_t size) {
    const auto page = static_cast<ElfW(Addr)>(sysconf(_SC_PAGESIZE));
    const ElfW(Addr) first = start & ~(page - 1);
    if (mprotect(reinterpret_cast<void*>(first), start + size - first, PROT_READ | PROT_WRITE) == 0)
        return;
    std::perror("mprotect");
    std::abort();
}

int collect(dl_phdr_info* library, size_t, void* result) {
    if (std::string_view(library->dlpi_name).find("/libplatform.so") == std::string_view::npos)
        return 0;
    Relocations table;
    for (int i = 0; i < library->dlpi_phnum; ++i) {
        const auto& header = library->dlpi_phdr[i];
        const ElfW(Addr) start = library->dlpi_addr + header.p_vaddr;
        if (header.p_type == PT_DYNAMIC)
            table = read_dynamic_section(reinterpret_cast<const ElfW(Dyn)*>(start));
        if (header.p_type == PT_GNU_RELRO) make_writable(start, header.p_memsz);
    }
    const auto add = [&](const ElfW(Rela) * entry, size_t size) {
        for (const auto* end = entry + size / sizeof *entry; entry != end; ++entry) {
            const ElfW(Sym)& symbol = table.symbols[ELF64_R_SYM(entry->r_info)];
            if (symbol.st_name == 0 || symbol.st_shndx != SHN_UNDEF) continue;
            static_cast<std::vector<Import>*>(result)->push_back(
                {table.names + symbol.st_name,
                 reinterpret_cast<void**>(library->dlpi_addr + entry->r_offset)});
        }
    };
    add(table.data, table.data_size);
    add(table.calls, table.calls_size);
    return 1;
}

const std::vector<Import>& imports() {
    static const std::vector<Import> list = [] {
        std::vector<Import> found;
        dl_iterate_phdr(collect, &found);
        if (!found.empty()) return found;
        std::fputs("libplatform.so is not loaded\n", stderr);
        std::abort();
    }();
    return list;
}

}  // namespace

LibraryHook::LibraryHook(std::string_view name, void* replacement, std::nullptr_t) {
    for (const Import& import : imports()) {
        if (import.name != name) continue;
        diverted_.push_back({import.slot, *import.slot});
        *import.slot = replacement;
    }
}

LibraryHook::~LibraryHook() {
    for (const Diverted& diverted : diverted_) *diverted.slot = diverted.original;
}

std::vector<std::string_view> library_imports() {
    std::vector<std::string_view> names;
    for (const Import& import : imports()) names.push_back(import.name);
    return names;
}

}  // namespace harness
