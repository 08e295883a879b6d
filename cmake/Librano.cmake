# How a folder of the source becomes its two targets, and how tests and tools are added.

find_program(CCACHE ccache)
if(CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE})
endif()
find_program(MOLD mold)
if(MOLD)
  add_link_options(-fuse-ld=mold)
endif()

add_library(librano_flags INTERFACE)
target_compile_options(librano_flags INTERFACE -Wall -Wextra -Wpedantic -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # ccache can only reuse a precompiled header that was preprocessed into its key.
  target_compile_options(librano_flags INTERFACE -fpch-preprocess)
endif()
target_compile_definitions(
  librano_flags INTERFACE QT_NO_CAST_FROM_BYTEARRAY QT_NO_FOREACH QT_NO_KEYWORDS)
target_include_directories(librano_flags INTERFACE ${CMAKE_SOURCE_DIR}/src)
# Undefined behaviour ends the test or the input that shows it: told only, it would pass unseen.
if(LIBRANO_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()
if(LIBRANO_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all)
  add_link_options(-fsanitize=address,undefined)
endif()

# One precompiled header serves all targets of a kind: the first of them makes it.
function(librano_precompile target first header)
  if(target STREQUAL first)
    target_precompile_headers(${target} PRIVATE ${CMAKE_SOURCE_DIR}/cmake/${header})
  else()
    target_precompile_headers(${target} REUSE_FROM ${first})
  endif()
endfunction()

# librano_folder(<name> [FORMS_ONLY] [CORE_LIBS libs...] [FORMS_LIBS libs...])
#
# Makes <name>_core from every source of the folder without widgets and its tables in datos/, and
# <name>_forms from frm*, registro.*, its icons and the subfolder widgets/, or from all of them. Each is
# linked with the folders given before it in LIBRANO_FOLDERS, so a folder can only reach those to its left. A folder without sources of one
# kind gets an empty interface target.
function(librano_folder name)
  cmake_parse_arguments(ARG "FORMS_ONLY" "" "CORE_LIBS;FORMS_LIBS" ${ARGN})
  file(GLOB_RECURSE all RELATIVE ${CMAKE_CURRENT_SOURCE_DIR} CONFIGURE_DEPENDS *.cpp *.ui *.qrc)
  set(forms ${all})
  # Relative: the checkout itself may lie in a folder of one of these names.
  set(patron "(^|/)(frm[^/]*$|registro[.]|widgets/)|^[^/]*[.]qrc$")
  if(ARG_FORMS_ONLY)
    set(patron ".")
  endif()
  list(FILTER forms INCLUDE REGEX ${patron})
  set(core ${all})
  list(FILTER core EXCLUDE REGEX ${patron})

  get_property(earlier GLOBAL PROPERTY LIBRANO_FOLDERS)
  list(TRANSFORM earlier APPEND _core OUTPUT_VARIABLE earlier_core)
  list(TRANSFORM earlier APPEND _forms OUTPUT_VARIABLE earlier_forms)
  set_property(GLOBAL APPEND PROPERTY LIBRANO_FOLDERS ${name})

  if(core)
    add_library(${name}_core STATIC ${core})
    target_link_libraries(
      ${name}_core PUBLIC librano_flags Qt6::Core ${earlier_core} ${ARG_CORE_LIBS})
    librano_precompile(${name}_core common_core core_pch.h)
  else()
    add_library(${name}_core INTERFACE)
    target_link_libraries(${name}_core INTERFACE ${earlier_core})
  endif()
  if(forms)
    # Each form depends on the header made from its own .ui alone.
    set(screens ${forms})
    list(FILTER screens INCLUDE REGEX "[.]ui$")
    list(FILTER forms EXCLUDE REGEX "[.]ui$")
    qt6_wrap_ui(screens ${screens})
    add_library(${name}_forms STATIC ${forms} ${screens})
    target_include_directories(${name}_forms PRIVATE ${CMAKE_CURRENT_BINARY_DIR})
    target_link_libraries(
      ${name}_forms PUBLIC ${name}_core Qt6::Widgets Qt6::PrintSupport Qt6::Svg ${earlier_forms}
                           ${ARG_FORMS_LIBS})
    librano_precompile(${name}_forms toolkit_forms forms_pch.h)
  else()
    add_library(${name}_forms INTERFACE)
    target_link_libraries(${name}_forms INTERFACE ${name}_core ${earlier_forms})
  endif()
endfunction()
