# cmake -DREADME=… -DPROGRAM=… -P CheckReadme.cmake
# The program that the README shows must be the one that is compiled and run.
file(READ "${README}" readme)
file(READ "${PROGRAM}" program)
string(FIND "${readme}" "<!-- first.cpp -->\n```cpp\n${program}```\n" place)
if(place EQUAL -1)
  message(FATAL_ERROR "The program in ${README} is not that of ${PROGRAM}")
endif()
