# cmake -DFILE=<module> -DOBJDUMP=<objdump> -P aligned.cmake
#
# Passes when no wide vector is moved as if its address were a multiple of its size. On
# 64-bit Windows the stack is aligned to 16 bytes only, and GCC spills wider vectors there
# with the moves that fault.
execute_process(COMMAND ${OBJDUMP} -d --no-show-raw-insn ${FILE}
                OUTPUT_VARIABLE listing COMMAND_ERROR_IS_FATAL ANY)
if(NOT listing MATCHES "%zmm")
  message(FATAL_ERROR "\n  ${FILE}\n  has no wide vectors to look at")
endif()
string(REGEX MATCH "[^\n]*vmov(aps|apd|dqa|dqa32|dqa64)[ \t][^\n]*%[yz]mm[^\n]*" move "${listing}")
if(move)
  message(FATAL_ERROR "\n  ${FILE}\n  has an aligned move: ${move}")
endif()
