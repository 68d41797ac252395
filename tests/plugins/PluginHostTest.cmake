# Runs the plug-in host twice, then reads what it left on disk: one log
# file with the host's and both plug-ins' lines, and a profile in which
# each plug-in's settings lasted from the first run into the second and
# each undone draft was taken back. A third run, with its own profile
# naming a plug-in that is nowhere and the plug-in folder given by the
# variable PLUGINS, runs the one it finds and fails.
file(REMOVE_RECURSE ${WORK_DIR})
file(MAKE_DIRECTORY ${WORK_DIR}/log ${WORK_DIR}/system)
set(ENV{LOGDIR} ${WORK_DIR}/log)
set(ENV{ZNUTIL_SYSTEM_DIR} ${WORK_DIR}/system)
set(ENV{HOME} ${WORK_DIR})
# The plug-ins are found in the folder PLUGINS beside the host.
unset(ENV{PLUGINS})
unset(ENV{PLUGINS_ORDER})
set(profile_file ${WORK_DIR}/host.cfg)

function(run_host profile expected_result)
  execute_process(COMMAND ${HOST} ${profile} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
  if(NOT result EQUAL expected_result)
    message(FATAL_ERROR "the host ended with ${result}, not ${expected_result}:\n${output}")
  endif()
endfunction()

run_host(${profile_file} 0)
run_host(${profile_file} 0)

function(expect file_text what)
  foreach(pattern IN LISTS ARGN)
    string(FIND "${file_text}" "${pattern}" at)
    if(at EQUAL -1)
      message(FATAL_ERROR "the ${what} lacks '${pattern}':\n${file_text}")
    endif()
  endforeach()
endfunction()

get_filename_component(host_name ${HOST} NAME)
file(READ ${WORK_DIR}/log/${host_name}.log log)
expect("${log}" "log"
  "Greeter  Start\n\tthe host says: welcome to run 2"
  "Counter  Start\n\tthe host says: welcome to run 2"
  "Host  Plugins\n\tgreeter: greeter says hello again\n"
  "Host  Plugins\n\tcounter: counter has run 2 times"
  "Greeter  Undo\n\tEdit Greeter/Draft undone"
  "Counter  Undo\n\tEdit Counter/Draft undone"
  "run 2: 2 of 2 plug-ins ran")

file(READ ${profile_file} profile)
expect("${profile}" "profile"
  "section \"Counter\"\n\"Draft\" (all) =(text) \"\"\n\"Runs\" (all) =(integer) 2\n"
  "section \"Greeter\"\n\"Draft\" (all) =(text) \"\"\n\"Message\" (all) =(text) \"hello again again\"\n"
  "section \"Host\"\n\"Runs\" (all) =(integer) 2\n")

get_filename_component(host_dir ${HOST} DIRECTORY)
set(ENV{PLUGINS} ${host_dir}/PLUGINS)
file(WRITE ${WORK_DIR}/partial.cfg "section \"Host\"\n\"Plugins\" (all) =(text) \"counter;nowhere\"\n")
run_host(${WORK_DIR}/partial.cfg 1)
file(READ ${WORK_DIR}/log/${host_name}.log log)
expect("${log}" "log" "counter: counter has run 1 times" "nowhere is not on the plug-in path" "run 1: 1 of 2 plug-ins ran")
