# Runs one golden case of backplot-cli and compares stdout, stderr and the exit status.
# @DIR@ and @WORK@ are literal stand-ins, not @VAR@ references.
#
# Optional files of a case:
#   pipe         a command line that reads the tool's stdout (such as "head -n 1"); the
#                expected stdout is then what that command prints
#   stdout-file  a file the tool's stdout goes to instead (such as /dev/full)
#   expect/files/NAME  a file the tool must have written as @WORK@/NAME, byte for byte
# Every case runs with TMPDIR set to a folder of its own, which must be empty afterwards:
# the tool leaves nothing behind on any way out.
cmake_minimum_required(VERSION 3.25)
file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK}/tmp)
set(ENV{TMPDIR} ${WORK}/tmp)
file(STRINGS ${CASE}/args lines)
set(args "")
foreach(line IN LISTS lines)
  string(REPLACE "@DIR@" "${CASE}" line "${line}")
  string(REPLACE "@WORK@" "${WORK}" line "${line}")
  list(APPEND args "${line}")
endforeach()

set(reader "")
if(EXISTS ${CASE}/pipe)
  file(STRINGS ${CASE}/pipe reader)
  separate_arguments(reader UNIX_COMMAND "${reader}")
  set(reader COMMAND ${reader})
endif()
set(redirect "")
if(EXISTS ${CASE}/stdout-file)
  file(STRINGS ${CASE}/stdout-file target)
  set(redirect OUTPUT_FILE ${target})
else()
  set(redirect OUTPUT_VARIABLE out)
endif()
execute_process(COMMAND ${CLI} ${args} ${reader}
  WORKING_DIRECTORY ${WORK}
  ${redirect} ERROR_VARIABLE err RESULTS_VARIABLE statuses)
list(GET statuses 0 status)

# Paths in the output stand for themselves as they do in args.
foreach(part out err)
  string(REPLACE "${CASE}" "@DIR@" ${part} "${${part}}")
  string(REPLACE "${WORK}" "@WORK@" ${part} "${${part}}")
endforeach()
# A difference is an error (the script's status says so), reported with every other.
set(actual_stdout "${out}")
set(actual_stderr "${err}")
set(actual_status "${status}\n")
foreach(part stdout stderr status)
  if(EXISTS ${CASE}/expect/${part})
    file(READ ${CASE}/expect/${part} expected)
    if(NOT actual_${part} STREQUAL expected)
      file(WRITE ${WORK}/actual.${part} "${actual_${part}}")
      message(SEND_ERROR "${part} differs: diff ${CASE}/expect/${part} ${WORK}/actual.${part}")
    endif()
  endif()
endforeach()
file(GLOB written RELATIVE ${CASE}/expect/files ${CASE}/expect/files/*)
foreach(name IN LISTS written)
  execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files ${CASE}/expect/files/${name} ${WORK}/${name}
    RESULT_VARIABLE different)
  if(different)
    message(SEND_ERROR "${name} differs: diff ${CASE}/expect/files/${name} ${WORK}/${name}")
  endif()
endforeach()
file(GLOB leftovers ${WORK}/tmp/*)
if(leftovers)
  message(SEND_ERROR "left behind in TMPDIR: ${leftovers}")
endif()
