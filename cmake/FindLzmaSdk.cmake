# The LZMA SDK as Debian's lzma-dev brings it: C sources and headers in one include folder, which are
# compiled here as a library of their own. The package lacks the multi-threaded match finder and the
# one-call library; file/KvLzma.cpp stands in for the latter.
# Gives the target LzmaSdk::LzmaSdk; its headers are included as <lzma/LzmaDec.h>.

find_path(LzmaSdk_INCLUDE_DIR lzma/LzmaDec.c)

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(LzmaSdk REQUIRED_VARS LzmaSdk_INCLUDE_DIR)

if(LzmaSdk_FOUND AND NOT TARGET LzmaSdk::LzmaSdk)
    set(sdk ${LzmaSdk_INCLUDE_DIR}/lzma)
    add_library(lzma_sdk STATIC ${sdk}/LzFind.c ${sdk}/LzmaDec.c ${sdk}/LzmaEnc.c)
    target_compile_definitions(lzma_sdk PUBLIC _7ZIP_ST)
    target_compile_options(lzma_sdk PRIVATE -w)
    target_include_directories(lzma_sdk SYSTEM PUBLIC ${LzmaSdk_INCLUDE_DIR})
    # Modules that bring an SDK of their own must not find this one in the executable.
    set_target_properties(lzma_sdk PROPERTIES C_VISIBILITY_PRESET hidden)
    add_library(LzmaSdk::LzmaSdk ALIAS lzma_sdk)
endif()
