// The platform library and the host firmware's library that it stands on, loaded at run time.
#pragma once

#include <string>

namespace boardctl {

class Library {
public:
    // Throws Missing when one of them cannot be loaded.
    Library(const std::string& host_path, const std::string& platform_path);

    // Of the platform library; throws Missing for a name that it does not have.
    void* find(const char* name) const;

    // Of the host library; the second gives null for a function that only some hosts have.
    void* find_host(const char* name) const;
    void* find_host_if_any(const char* name) const;

    template <class Type>
    Type* get(const char* name) const {
        return reinterpret_cast<Type*>(find(name));
    }
    template <class Type>
    Type* get_host(const char* name) const {
        return reinterpret_cast<Type*>(find_host(name));
    }

private:
    void* host_;
    void* platform_;
};

// A function by its declared name, with its declared type.
#define PLATFORM_CALL(library, name) (library).get<decltype(::name)>(#name)
#define HOST_CALL(library, name) (library).get_host<decltype(::name)>(#name)

}  // namespace boardctl
