# The library as it ships on the board: small in flash and in memory.
#
# Link-time optimisation makes it a tenth smaller, and its link writes the whole call graph with
# the stack of each function. Nothing throws or unwinds through us; frame pointers stay for those
# who read a crash. The tiny code model suits what is far below 1 MiB. Pages of the board's kernel
# have 4 KiB: aligning for larger ones would cost most of the budget in padding.
function(make_shipped_library library)
  target_compile_options(${library} PRIVATE
    -flto -mcmodel=tiny -fno-omit-frame-pointer -fno-asynchronous-unwind-tables -fno-unwind-tables)
  target_link_options(${library} PRIVATE
    -Os -flto -flto-partition=one -fcallgraph-info=su
    -Wl,-z,max-page-size=4096,-z,noseparate-code,--hash-style=gnu)
endfunction()
