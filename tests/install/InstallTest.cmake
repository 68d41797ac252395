# Installs the build into a fresh prefix, then builds and runs an outside
# project against it with find_package and with pkg-config. With
# -DFROM=packages the prefix is instead the /usr of a scratch root into
# which the Debian packages of the build are unpacked, and the packaged
# znutil command must run from there too.
file(REMOVE_RECURSE ${WORK_DIR})

function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "failed: ${ARGN}\n${output}")
  endif()
endfunction()

if(FROM STREQUAL "packages")
  set(prefix ${WORK_DIR}/root/usr)
  run(${CPACK} -G DEB --config ${BUILD_DIR}/CPackConfig.cmake -B ${WORK_DIR}/packages)
  foreach(package libznutil0 libznutil-dev znutil-tools)
    file(GLOB deb ${WORK_DIR}/packages/${package}_*.deb)
    if(NOT deb)
      message(FATAL_ERROR "no package ${package} was made")
    endif()
    run(dpkg -x ${deb} ${WORK_DIR}/root)
  endforeach()
  run(${prefix}/bin/znutil path --help)
  if(EXPECT_MAN_PAGES AND NOT EXISTS ${prefix}/share/man/man1/znutil-path.1.gz)
    message(FATAL_ERROR "znutil-tools has no manual pages")
  endif()
else()
  set(prefix ${WORK_DIR}/prefix)
  run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix})
endif()
run(${CMAKE_COMMAND} -S ${SOURCE_DIR}/tests/install/consumer -B ${WORK_DIR}/consumer -G Ninja
    -DCMAKE_PREFIX_PATH=${prefix} -DCMAKE_BUILD_RPATH=${prefix}/lib)
run(${CMAKE_COMMAND} --build ${WORK_DIR}/consumer)
# The global configuration file goes to the work folder, not the user's.
set(ENV{ZNUTIL_SYSTEM_DIR} ${WORK_DIR})
run(${WORK_DIR}/consumer/consumer)
run(${WORK_DIR}/consumer/consumer)
file(READ ${WORK_DIR}/consumer/consumer.cfg profile)
if(NOT profile MATCHES "\"Runs\" \\(all\\) =\\(integer\\) 2")
  message(FATAL_ERROR "the setting did not last from one run to the next:\n${profile}")
endif()
if(NOT EXISTS ${WORK_DIR}/consumer/consumer.log)
  message(FATAL_ERROR "the application wrote no log")
endif()

file(GLOB pc_file ${prefix}/lib*/pkgconfig/znutil.pc)
if(NOT pc_file)
  message(FATAL_ERROR "znutil.pc was not installed")
endif()
file(GLOB soname ${prefix}/lib*/libznutil.so.0)
if(NOT soname)
  message(FATAL_ERROR "libznutil.so.0 (the SONAME link) was not installed")
endif()

# The pkg-config file, relative to where it lies, builds the same program.
find_program(PKG_CONFIG pkg-config)
if(PKG_CONFIG)
  execute_process(COMMAND ${PKG_CONFIG} --cflags --libs ${pc_file} OUTPUT_VARIABLE flags
    OUTPUT_STRIP_TRAILING_WHITESPACE RESULT_VARIABLE result)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "pkg-config cannot read ${pc_file}")
  endif()
  separate_arguments(flags UNIX_COMMAND "${flags}")
  run(c++ ${SOURCE_DIR}/tests/install/consumer/main.cpp ${flags} -Wl,-rpath,${prefix}/lib
      -o ${WORK_DIR}/pkgconfig-consumer)
  run(${WORK_DIR}/pkgconfig-consumer)
endif()
