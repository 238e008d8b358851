# A cross build takes header-only packages of the build machine by links in the build folder: the
# machine's own include folder, which holds another system's headers, is never on the compiler's path.
function(take_header_package target folder)
  set(headers ${CMAKE_BINARY_DIR}/host_headers/${folder})
  if(NOT EXISTS /usr/include/${folder})
    message(FATAL_ERROR "The headers of ${target} are not installed")
  endif()
  file(MAKE_DIRECTORY ${headers})
  file(CREATE_LINK /usr/include/${folder} ${headers}/${folder} SYMBOLIC)
  add_library(host_${folder} INTERFACE)
  target_include_directories(host_${folder} SYSTEM INTERFACE ${headers})
  add_library(${target} ALIAS host_${folder})
endfunction()

take_header_package(CLI11::CLI11 CLI)
take_header_package(nlohmann_json::nlohmann_json nlohmann)
take_header_package(Boost::headers boost)
