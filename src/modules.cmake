include(GNUInstallDirs)

# Where an installed program finds its modules and its data, told from the program's own folder.
set(QH_MODULE_DIR ${CMAKE_INSTALL_LIBDIR}/quillharbor/modules)
set(QH_DATA_DIR ${CMAKE_INSTALL_DATADIR}/quillharbor)
file(RELATIVE_PATH QH_MODULES_FROM_PROGRAM
  ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_PREFIX}/${QH_MODULE_DIR})
file(RELATIVE_PATH QH_DATA_FROM_PROGRAM
  ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_PREFIX}/${QH_DATA_DIR})
target_compile_definitions(harbor PRIVATE
  QH_MODULES_FROM_PROGRAM="${QH_MODULES_FROM_PROGRAM}"
  QH_DATA_FROM_PROGRAM="${QH_DATA_FROM_PROGRAM}")

# A module is loaded by the program when it is first needed. In a build it lies in a folder beside
# the program.
function(qh_add_module name)
  add_library(${name} MODULE ${ARGN})
  target_include_directories(${name} PRIVATE ${CMAKE_CURRENT_FUNCTION_LIST_DIR})
  target_link_libraries(${name} PRIVATE qh_options Qt6::Core Qt6::Gui)
  set_target_properties(${name} PROPERTIES
    PREFIX ""
    NO_SONAME ON
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON
    LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/src/modules)
  if(TARGET quillharbor)
    add_dependencies(quillharbor ${name})
  endif()
  install(TARGETS ${name} LIBRARY DESTINATION ${QH_MODULE_DIR})
endfunction()

# The sound lies beside the program.
configure_file(${PROJECT_SOURCE_DIR}/assets/sounds/send.wav ${CMAKE_BINARY_DIR}/src/send.wav COPYONLY)
install(FILES ${PROJECT_SOURCE_DIR}/assets/sounds/send.wav DESTINATION ${QH_DATA_DIR})
