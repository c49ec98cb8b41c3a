# TinyXML 2.6.2, built with its STL option: the static archive where it is there, else the shared library.
# Gives the imported target TinyXML::TinyXML.

find_path(TinyXML_INCLUDE_DIR tinyxml.h)
find_library(TinyXML_LIBRARY NAMES libtinyxml.a tinyxml)

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(TinyXML REQUIRED_VARS TinyXML_LIBRARY TinyXML_INCLUDE_DIR)

if(TinyXML_FOUND AND NOT TARGET TinyXML::TinyXML)
    add_library(TinyXML::TinyXML UNKNOWN IMPORTED GLOBAL)
    set_target_properties(TinyXML::TinyXML PROPERTIES
        IMPORTED_LOCATION ${TinyXML_LIBRARY}
        INTERFACE_INCLUDE_DIRECTORIES ${TinyXML_INCLUDE_DIR}
        INTERFACE_COMPILE_DEFINITIONS TIXML_USE_STL)
endif()
