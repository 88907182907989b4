# Checks that the README shows hello.cpp unchanged.
file(READ "${CMAKE_CURRENT_LIST_DIR}/hello.cpp" hello)
file(READ "${CMAKE_CURRENT_LIST_DIR}/../README.md" readme)
string(FIND "${readme}" "```cpp\n${hello}```" place)
if(place EQUAL -1)
  message(FATAL_ERROR "README.md does not show examples/hello.cpp unchanged: copy the file into its cpp listing")
endif()
