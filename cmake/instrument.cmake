# Sanitizers and coverage apply to the library, the board and the tests alike.
if(PLATFORM_SANITIZE)
  # vptr and function checks need RTTI, which the library is built without.
  add_compile_options(-fsanitize=address,undefined -fno-sanitize=vptr,function
                      -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()
if(PLATFORM_FUZZ)
  add_compile_options(-gline-tables-only)
endif()
if(PLATFORM_COVERAGE)
  add_compile_options(--coverage)
  add_link_options(--coverage)
endif()
