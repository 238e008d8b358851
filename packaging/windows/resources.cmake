# Icon, version and manifest of a Windows program.
enable_language(RC)
function(add_windows_resources PROGRAM PROGRAM_PURPOSE)
  set(resources ${CMAKE_CURRENT_BINARY_DIR}/${PROGRAM}.rc)
  configure_file(${PROJECT_SOURCE_DIR}/packaging/windows/program.rc.in ${resources} @ONLY)
  target_sources(${PROGRAM} PRIVATE ${resources})
  set_source_files_properties(${resources} PROPERTIES OBJECT_DEPENDS
    "${PROJECT_SOURCE_DIR}/packaging/icon/korvanti.ico;${PROJECT_SOURCE_DIR}/packaging/windows/program.manifest")
endfunction()

add_windows_resources(korvanti "Converts drawings of panels into machine programs")
if(TARGET KV90WIN)
  add_windows_resources(KV90WIN "Korvanti")
endif()
