# The rules that a compiler keeps, for every target of the product: link goods_rules.
find_program(CCACHE ccache)
if(CCACHE)
    # Precompiled headers and several work trees share one cache.
    set(CMAKE_CXX_COMPILER_LAUNCHER
        ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
        CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} CCACHE_NOHASHDIR=1 ${CCACHE})
endif()

add_library(goods_rules INTERFACE)
target_compile_features(goods_rules INTERFACE cxx_std_20)
target_compile_options(goods_rules INTERFACE
    -Wall -Wextra -Wconversion -Werror -fvisibility=hidden -fvisibility-inlines-hidden -fpch-preprocess)
target_compile_definitions(goods_rules INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_CONTEXTLESS_CONNECT QT_NO_FOREACH
    QT_DISABLE_DEPRECATED_BEFORE=0x060400)
if(GOODS_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer -g1)
    add_link_options(-fsanitize=address,undefined)
endif()

# A build of everything takes half as long when neighbours are compiled in one go; the presets of daily work do without,
# so that a change compiles its own file only. Files whose helpers are called as their neighbours' are named with
# goods_alone(FILE...).
option(GOODS_BATCHES "Compile several sources at once" OFF)
set(CMAKE_UNITY_BUILD ${GOODS_BATCHES})
set(CMAKE_UNITY_BUILD_BATCH_SIZE 8)
if(GOODS_BATCHES)
    add_compile_options(-Wno-subobject-linkage) # takes what is included for a header
endif()
function(goods_alone)
    set_source_files_properties(${ARGN} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
endfunction()

# Precompiled headers by layer, compiled once for all targets of the layer: goods_headers(TARGET core|widgets).
# QtTest is in neither: only the tests need it.
set(GOODS_PCH_CORE <QtCore/QtCore> <QtSql/QtSql> <memory> <optional> <string> <vector>)
set(GOODS_PCH_WIDGETS ${GOODS_PCH_CORE} <QtWidgets/QtWidgets>)
file(WRITE ${CMAKE_BINARY_DIR}/empty.cpp "")
add_library(headers_core OBJECT ${CMAKE_BINARY_DIR}/empty.cpp)
target_precompile_headers(headers_core PRIVATE ${GOODS_PCH_CORE})
target_link_libraries(headers_core PRIVATE Qt6::Core Qt6::Sql goods_rules)
add_library(headers_widgets OBJECT ${CMAKE_BINARY_DIR}/empty.cpp)
target_precompile_headers(headers_widgets PRIVATE ${GOODS_PCH_WIDGETS})
target_link_libraries(headers_widgets PRIVATE Qt6::Core Qt6::Sql Qt6::Gui Qt6::Widgets goods_rules)
set_target_properties(headers_core headers_widgets PROPERTIES AUTOMOC OFF AUTOUIC OFF AUTORCC OFF)
function(goods_headers target layer)
    target_precompile_headers(${target} REUSE_FROM headers_${layer})
endfunction()

# goods_sources(VARIABLE FOLDER...) collects the sources and forms of the folders. With them goes a header that names
# them: moc runs again when a file that it has read changes, and so learns of a file that it has not read yet.
function(goods_sources variable)
    set(all)
    foreach(folder ${ARGN})
        file(GLOB found CONFIGURE_DEPENDS ${folder}/*.cpp ${folder}/*.h ${folder}/*.ui ${folder}/*.qrc)
        list(APPEND all ${found})
    endforeach()
    list(JOIN all "\n// " names)
    set(listed ${CMAKE_CURRENT_BINARY_DIR}/listed_${variable}.h)
    file(CONFIGURE OUTPUT ${listed} CONTENT "// ${names}\n" @ONLY)
    set(${variable} ${all} ${listed} PARENT_SCOPE)
endfunction()
