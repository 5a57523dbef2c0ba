# Script of the install test: stage, configure, build and run the consumer,
# then start the installed demo from the prefix's bin/ for a moment.
function(run_step what)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE out ERROR_VARIABLE out)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "${what} failed (${result}):\n${out}")
  endif()
  message(STATUS "${what}: ok")
endfunction()

file(REMOVE_RECURSE "${STAGE_DIR}" "${CONSUMER_BUILD_DIR}")
run_step("install into ${STAGE_DIR}"
  ${CMAKE_COMMAND} --install "${BUILD_DIR}" --prefix "${STAGE_DIR}")
run_step("configure consumer"
  ${CMAKE_COMMAND} -S "${CONSUMER_SOURCE_DIR}" -B "${CONSUMER_BUILD_DIR}" -G "${GENERATOR}"
    "-DCMAKE_PREFIX_PATH=${STAGE_DIR}" "-DCMAKE_BUILD_TYPE=${CONSUMER_BUILD_TYPE}"
    "-DCMAKE_CXX_FLAGS=${CONSUMER_FLAGS}" "-DCMAKE_EXE_LINKER_FLAGS=${CONSUMER_FLAGS}")
run_step("build consumer" ${CMAKE_COMMAND} --build "${CONSUMER_BUILD_DIR}")
run_step("run consumer" "${CONSUMER_BUILD_DIR}/alarmscreen-consumer")
if(DEMO_EXECUTABLE)
  run_step("run installed demo"
    "${STAGE_DIR}/${DEMO_EXECUTABLE}" --project "${DEMO_PROJECT_DIR}" --quit-after 1000)
endif()
