// The platform library and the host firmware's library that it stands on, loaded at run time.
#pragma once

#include <string>

namespace boardctl {

class Library {
public:
    enum class Part { host, platform };

    // Throws Missing when one of them cannot be loaded.
    Library(const std::string& host_path, const std::string& platform_path);

    // For a name that the library does not have, null; the others throw Missing.
    void* find_if_any(Part part, const char* name) const;
    void* find(Part part, const char* name) const;
    void* find(const char* name) const { return find(Part::platform, name); }

    template <class Type>
    Type* get(const char* name) const {
        return reinterpret_cast<Type*>(find(Part::platform, name));
    }
    template <class Type>
    Type* get_host(const char* name) const {
        return reinterpret_cast<Type*>(find(Part::host, name));
    }

private:
    void* host_;
    void* platform_;
};

}  // namespace boardctl
