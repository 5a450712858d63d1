# Tries the installed package as a user would, in a temporary folder that is
# removed afterwards:
#  1. installs the build tree into a temporary prefix (cmake --install);
#  2. configures, builds and runs the outside host in host/ against it;
#  3. copies the prefix elsewhere, checks that the copied programs and
#     libraries resolve the package's libraries inside the copy and nothing
#     from the build tree, and runs the copied tzmap-sampledata and
#     tzmap --snapshot from there; the host checks the snapshot.
# Called by ctest with BUILD_DIR, HOST_DIR, GENERATOR and the build's
# HOST_CXX_FLAGS and HOST_LINKER_FLAGS set; the work folder is made in the
# temporary folder, away from the build tree.
cmake_minimum_required(VERSION 3.25)

set(temp $ENV{TMPDIR})
if(NOT temp)
  set(temp /tmp)
endif()
string(RANDOM LENGTH 8 suffix)
set(work ${temp}/tzrender-install-${suffix})
set(prefix ${work}/prefix)
set(copy ${work}/copy/elsewhere)
file(REMOVE_RECURSE ${work})
file(MAKE_DIRECTORY ${work})
# The installed files must find each other on their own.
unset(ENV{LD_LIBRARY_PATH})
# Headless, and in English whatever the developer's locale.
set(ENV{QT_QPA_PLATFORM} offscreen)
set(ENV{LC_ALL} C.UTF-8)
unset(ENV{LANGUAGE})

function(fail message)
  file(REMOVE_RECURSE ${work})
  message(FATAL_ERROR "${message}")
endfunction()

# Runs a command; fails the test with its output unless it succeeds.
function(run output_var)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE out)
  if(NOT rc EQUAL 0)
    string(REPLACE ";" " " command "${ARGN}")
    fail("${command} failed (${rc}):\n${out}")
  endif()
  set(${output_var} "${out}" PARENT_SCOPE)
endfunction()

run(out ${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix})

# The outside project, configured and built against the prefix, with the
# package's own compiler and linker flags: a program linked to libraries
# built with the sanitizers must be built with them too.
run(out ${CMAKE_COMMAND} -S ${HOST_DIR} -B ${work}/host -G ${GENERATOR}
    -DCMAKE_BUILD_TYPE=Release -DCMAKE_PREFIX_PATH=${prefix}
    "-DCMAKE_CXX_FLAGS=${HOST_CXX_FLAGS}" "-DCMAKE_EXE_LINKER_FLAGS=${HOST_LINKER_FLAGS}")
run(out ${CMAKE_COMMAND} --build ${work}/host)
run(out ${work}/host/tzhost)
message(STATUS "${out}")

file(MAKE_DIRECTORY ${copy})
file(COPY ${prefix}/ DESTINATION ${copy})

# Every copied program and library takes the package's libraries from the
# copy; none is missing and none comes from the build tree.
file(GLOB_RECURSE binaries LIST_DIRECTORIES false ${copy}/bin/* ${copy}/lib*/libTZ*.so*)
list(LENGTH binaries count)
if(count LESS 5)
  fail("the prefix lacks programs or libraries: ${binaries}")
endif()
foreach(binary IN LISTS binaries)
  if(IS_SYMLINK ${binary})
    continue()
  endif()
  run(deps ldd ${binary})
  string(REGEX MATCHALL "[^\n]*libTZ[^\n]*" package_deps "${deps}")
  foreach(line IN LISTS package_deps)
    string(FIND "${line}" "=> ${copy}/" inside)
    if(inside LESS 0)
      fail("${binary} does not take its library from the copied prefix:\n${line}")
    endif()
  endforeach()
  string(FIND "${deps}" "not found" missing)
  string(FIND "${deps}" "${BUILD_DIR}/lib/" from_build)
  if(missing GREATER_EQUAL 0 OR from_build GREATER_EQUAL 0)
    fail("${binary} does not resolve its libraries on its own:\n${deps}")
  endif()
endforeach()

run(out ${copy}/bin/tzmap-sampledata ${work}/data)
run(out ${copy}/bin/tzmap ${work}/data/sample.tzmap --select regions --snapshot ${work}/snapshot.png)
run(out ${work}/host/tzhost ${work}/snapshot.png)
message(STATUS "${out}")

file(REMOVE_RECURSE ${work})
