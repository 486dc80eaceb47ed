# vantrel_add_qml_module(<target> URI <uri> QML_FILES <files...>)
# Makes <target> (a static library) a QML module compiled ahead of time. Its files may live in a
# qml/ folder; they are served from the module's root, qrc:/qt/qml/<uri path>/<file>.
# The C++ that qmlcachegen writes shadows its own parameters: that warning stays on for our
# code and off for the generated files only.
function(vantrel_add_qml_module target)
    cmake_parse_arguments(M "" "URI" "QML_FILES" ${ARGN})
    string(REPLACE "." "/" uri_path ${M_URI})
    foreach(qml ${M_QML_FILES})
        get_filename_component(file ${qml} NAME)
        set_source_files_properties(${qml} PROPERTIES QT_RESOURCE_ALIAS ${file})
    endforeach()
    qt_add_qml_module(${target}
        URI ${M_URI}
        VERSION 1.0
        RESOURCE_PREFIX /qt/qml
        OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/qml/${uri_path}
        QML_FILES ${M_QML_FILES}
    )
    foreach(qml ${M_QML_FILES})
        get_filename_component(name ${qml} NAME_WE)
        set_source_files_properties(${CMAKE_CURRENT_BINARY_DIR}/.rcc/qmlcache/${target}_qml/${name}_qml.cpp
            PROPERTIES COMPILE_OPTIONS -Wno-shadow)
    endforeach()
endfunction()
