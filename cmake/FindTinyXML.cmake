# TinyXML 2.6.2, built with its STL option: the static archive where it is there, else the shared library.
# Gives the target TinyXML::TinyXML.
#
# With KV_TINYXML_SOURCE, a folder that scripts/tinyxml-source has filled, it is compiled from there with
# this build's own flags: for sanitizers, which see nothing of a finished library, and for machines that
# the installed one is not for.

set(KV_TINYXML_SOURCE "" CACHE PATH "Folder with TinyXML's sources to compile; empty for the installed library")

if(KV_TINYXML_SOURCE)
    find_path(TinyXML_SOURCE_DIR tinyxmlparser.cpp PATHS ${KV_TINYXML_SOURCE} NO_DEFAULT_PATH)
    set(required TinyXML_SOURCE_DIR)
else()
    find_path(TinyXML_INCLUDE_DIR tinyxml.h)
    find_library(TinyXML_LIBRARY NAMES libtinyxml.a tinyxml)
    set(required TinyXML_LIBRARY TinyXML_INCLUDE_DIR)
endif()

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(TinyXML REQUIRED_VARS ${required})

if(NOT TinyXML_FOUND OR TARGET TinyXML::TinyXML)
    return()
endif()
if(KV_TINYXML_SOURCE)
    set(source ${TinyXML_SOURCE_DIR})
    add_library(tinyxml_source STATIC ${source}/tinyxml.cpp ${source}/tinyxmlerror.cpp
                                      ${source}/tinyxmlparser.cpp)
    target_compile_definitions(tinyxml_source PUBLIC TIXML_USE_STL)
    target_compile_options(tinyxml_source PRIVATE -w)
    target_include_directories(tinyxml_source SYSTEM PUBLIC ${source})
    add_library(TinyXML::TinyXML ALIAS tinyxml_source)
else()
    add_library(TinyXML::TinyXML UNKNOWN IMPORTED GLOBAL)
    set_target_properties(TinyXML::TinyXML PROPERTIES
        IMPORTED_LOCATION ${TinyXML_LIBRARY}
        INTERFACE_INCLUDE_DIRECTORIES ${TinyXML_INCLUDE_DIR}
        INTERFACE_COMPILE_DEFINITIONS TIXML_USE_STL)
endif()
