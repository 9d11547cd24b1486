# The library as it ships: bound when it is loaded, so that a function which the host lacks shows
# there and the table of addresses is read-only; the C library checks the sizes of buffers. A C
# library without such checks ignores the macro.
function(make_shipped_library library)
  set(level 2)
  if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_GREATER_EQUAL 12)
    set(level 3)
  endif()
  target_compile_options(${library} PRIVATE
    $<$<CONFIG:Release,MinSizeRel,RelWithDebInfo>:-D_FORTIFY_SOURCE=${level}>)  # it takes an optimising compiler
  target_link_options(${library} PRIVATE -Wl,-z,now)
endfunction()

# On the board it is also small in flash and in memory.
#
# Link-time optimisation makes it a tenth smaller, and its link writes the whole call graph with
# the stack of each function. Nothing throws or unwinds through us; frame pointers stay for those
# who read a crash. The tiny code model suits what is far below 1 MiB. Pages of the board's kernel
# have 4 KiB: aligning for larger ones would cost most of the budget in padding.
function(make_small_library library)
  target_compile_options(${library} PRIVATE
    -flto -mcmodel=tiny -fno-omit-frame-pointer -fno-asynchronous-unwind-tables -fno-unwind-tables)
  target_link_options(${library} PRIVATE
    -Os -flto -flto-partition=one -fcallgraph-info=su
    -Wl,-z,max-page-size=4096,-z,noseparate-code,--hash-style=gnu)
endfunction()
