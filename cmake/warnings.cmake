# The presets make them errors.
add_library(platform_warnings INTERFACE)
target_compile_options(platform_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wformat=2)
