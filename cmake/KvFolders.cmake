# One folder of the house = one static library of the same name with its dependencies declared; a
# folder of headers alone is an interface library.

# kv_add_folder(NAME [SOURCES file...] [DEPENDS folder...] [PRIVATE_DEPENDS target...])
# Headers are found by listing; each is also compiled alone, so that none leans on its includer.
function(kv_add_folder name)
    cmake_parse_arguments(arg "" "" "SOURCES;DEPENDS;PRIVATE_DEPENDS" ${ARGN})
    file(GLOB headers CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.h)
    set(alone "")
    foreach(header ${headers})
        get_filename_component(stem ${header} NAME_WE)
        set(unit ${CMAKE_CURRENT_BINARY_DIR}/alone/${stem}.cpp)
        file(CONFIGURE OUTPUT ${unit} CONTENT "#include \"${name}/${stem}.h\"\n")
        list(APPEND alone ${unit})
    endforeach()

    list(TRANSFORM arg_DEPENDS PREPEND kv_)
    if(arg_SOURCES)
        add_library(kv_${name} STATIC ${arg_SOURCES})
        target_include_directories(kv_${name} PUBLIC ${PROJECT_SOURCE_DIR})
        target_compile_features(kv_${name} PUBLIC cxx_std_20)
        target_link_libraries(kv_${name} PUBLIC ${arg_DEPENDS} PRIVATE ${arg_PRIVATE_DEPENDS})
        kv_own_target(kv_${name})
    else()
        add_library(kv_${name} INTERFACE)
        target_include_directories(kv_${name} INTERFACE ${PROJECT_SOURCE_DIR})
        target_compile_features(kv_${name} INTERFACE cxx_std_20)
        target_link_libraries(kv_${name} INTERFACE ${arg_DEPENDS})
    endif()

    # That headers compile alone need not be shown once more by a build that looks for faults at run time.
    if(KV_SANITIZE OR KV_COVERAGE)
        return()
    endif()
    add_library(kv_${name}_headers OBJECT ${alone})
    target_link_libraries(kv_${name}_headers PRIVATE kv_${name})
    kv_own_target(kv_${name}_headers)
endfunction()
