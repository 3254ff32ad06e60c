# The Windows side: the rooms that know Windows, the two COM DLLs, the host, their manifests and tests, and dist/.
if(CMAKE_SIZEOF_VOID_P EQUAL 8)
    set(architecture amd64)
    set(widl_target --win64)
    set(width x64)
else()
    set(architecture x86)
    set(widl_target --win32)
    set(width x86)
endif()
set(dist_folder ${CMAKE_SOURCE_DIR}/dist/${width})
set(generated ${CMAKE_BINARY_DIR}/generated)
add_compile_definitions(UNICODE _UNICODE NOMINMAX)

room(src/com USES automation)
get_target_property(com_sources com SOURCES)
list(FILTER com_sources EXCLUDE REGEX "/Exports\\.cpp$") # belongs into each DLL, not into a library
set_target_properties(com PROPERTIES SOURCES "${com_sources}")
target_link_libraries(com PUBLIC oleaut32 ole32 uuid advapi32)
room(src/win32 USES common com)
target_link_libraries(win32 PUBLIC comctl32 comdlg32 winspool uxtheme gdi32 user32 shell32)

# The type library, and the C++ declarations that it is served through.
find_program(WIDL NAMES ${CMAKE_SYSTEM_PROCESSOR}-w64-mingw32-widl REQUIRED)
find_path(IDL_DIR oaidl.idl PATHS /usr/include/wine/wine/windows /usr/include/wine/windows REQUIRED
    NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH)
find_path(STDOLE_DIR stdole2.tlb PATHS /usr/lib/x86_64-linux-gnu/wine/x86_64-windows REQUIRED
    NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH)
set(idl ${CMAKE_SOURCE_DIR}/src/com/goodsreq.idl)
file(MAKE_DIRECTORY ${generated})
add_custom_command(
    OUTPUT ${generated}/goodsreq.tlb ${generated}/goodsreq_h.h
    COMMAND ${WIDL} ${widl_target} -I${IDL_DIR} -L${STDOLE_DIR} -t -o ${generated}/goodsreq.tlb ${idl}
    COMMAND ${WIDL} ${widl_target} -I${IDL_DIR} -L${STDOLE_DIR} -h -o ${generated}/goodsreq_h.h ${idl}
    DEPENDS ${idl} COMMENT "Compiling the type library" VERBATIM)
add_custom_target(typelib DEPENDS ${generated}/goodsreq.tlb ${generated}/goodsreq_h.h)

# The sandbox's classes: one table makes the registration and the manifests.
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS
    ${CMAKE_SOURCE_DIR}/sandbox/host/classes.txt ${idl} ${CMAKE_SOURCE_DIR}/src/com/dll/assembly.manifest.in
    ${CMAKE_SOURCE_DIR}/src/com/dll/host.manifest.in)
file(STRINGS sandbox/host/classes.txt class_lines REGEX "^[^#]")
set(table "")
set(all_classes "")
set(suite_classes "")
foreach(line IN LISTS class_lines)
    string(REPLACE "|" ";" fields "${line}")
    list(GET fields 0 id)
    list(GET fields 1 progid)
    list(GET fields 2 description)
    string(APPEND table "{com::guid(\"${id}\"), \"${progid}\", \"${description}\", &create},\n")
    set(com_class "        <comClass clsid=\"{${id}}\" progid=\"${progid}\" threadingModel=\"Apartment\"/>\n")
    string(APPEND all_classes "${com_class}")
    if(NOT progid MATCHES "^ADODB\\.")
        string(APPEND suite_classes "${com_class}")
    endif()
endforeach()
file(CONFIGURE OUTPUT ${generated}/SandboxClasses.inc CONTENT "${table}" @ONLY)

# A DLL's classes as a side-by-side assembly. It is named other than the DLL, or Windows would look for the manifest
# inside the DLL and go no further.
function(assembly_manifest assembly dll classes interfaces)
    configure_file(${CMAKE_SOURCE_DIR}/src/com/dll/assembly.manifest.in ${CMAKE_BINARY_DIR}/${assembly}.manifest @ONLY)
endfunction()
# What lies beside a program, so that it finds these assemblies' classes before those of the registry.
function(host_manifest host file)
    set(dependencies "")
    foreach(assembly IN LISTS ARGN)
        string(APPEND dependencies "    <dependency>\n        <dependentAssembly>\n            <assemblyIdentity "
            "type=\"win32\" name=\"${assembly}\" version=\"1.0.0.0\" processorArchitecture=\"${architecture}\"/>\n"
            "        </dependentAssembly>\n    </dependency>\n")
    endforeach()
    configure_file(${CMAKE_SOURCE_DIR}/src/com/dll/host.manifest.in ${CMAKE_BINARY_DIR}/${file} @ONLY)
endfunction()

file(READ ${idl} idl_text)
string(REGEX MATCH "uuid\\(([-0-9A-F]+)\\)[^]]*\\][ \n]*library" ignored "${idl_text}")
set(library_id ${CMAKE_MATCH_1})
string(REGEX MATCH "uuid\\(([-0-9A-F]+)\\)[^]]*\\][ \n]*coclass" ignored "${idl_text}")
set(class_id ${CMAKE_MATCH_1})
string(REGEX MATCH "uuid\\(([-0-9A-F]+)\\)[^]]*\\][ \n]*interface" ignored "${idl_text}")
set(interface_id ${CMAKE_MATCH_1})
# The interface crosses apartments by the system's marshaller for type libraries, here as where it is registered.
assembly_manifest(goodsreq.component goodsreq.dll
    "        <comClass clsid=\"{${class_id}}\" progid=\"goodsreq.clsGRtoShop\" tlbid=\"{${library_id}}\"
            threadingModel=\"Apartment\"/>
        <typelib tlbid=\"{${library_id}}\" version=\"1.0\" helpdir=\"\"/>\n"
    "    <comInterfaceExternalProxyStub name=\"_clsGRtoShop\" iid=\"{${interface_id}}\" tlbid=\"{${library_id}}\"
        proxyStubClsid32=\"{00020424-0000-0000-C000-000000000046}\"
        baseInterface=\"{00020400-0000-0000-C000-000000000046}\"/>\n")
assembly_manifest(goodsreq.sandbox sandbox.dll "${all_classes}" "")
assembly_manifest(goodsreq.suite sandbox.dll "${suite_classes}" "")
host_manifest(goodsreq.host goodsreq-host.exe.manifest goodsreq.component goodsreq.sandbox)
host_manifest(goodsreq.host goodsreq-connect.exe.manifest goodsreq.component goodsreq.suite) # the machine's own ADO
# For the tests: Windows' own scripting host has a manifest inside it and ignores one beside it, other than Wine's.
host_manifest(goodsreq.script cscript.exe.manifest goodsreq.sandbox)

# What the properties of a file show of it.
function(version_resource target file kind description)
    get_filename_component(name ${file} NAME_WE)
    configure_file(${CMAKE_SOURCE_DIR}/src/com/dll/version.rc.in ${generated}/${target}_version.rc @ONLY)
    target_sources(${target} PRIVATE ${generated}/${target}_version.rc)
endfunction()

# The DLLs.
function(com_dll name)
    add_library(${name}_dll SHARED ${CMAKE_SOURCE_DIR}/src/com/Exports.cpp
        ${CMAKE_SOURCE_DIR}/src/com/exports.def ${ARGN})
    set_target_properties(${name}_dll PROPERTIES OUTPUT_NAME ${name} PREFIX "")
    target_include_directories(${name}_dll PRIVATE ${generated})
    target_link_options(${name}_dll PRIVATE -static -Wl,--enable-stdcall-fixup)
endfunction()

com_dll(goodsreq src/com/dll/GoodsreqServer.cpp src/com/dll/clsGRtoShop.cpp src/com/dll/goodsreq.rc)
add_dependencies(goodsreq_dll typelib)
set_source_files_properties(src/com/dll/goodsreq.rc PROPERTIES
    INCLUDE_DIRECTORIES "${generated};${CMAKE_SOURCE_DIR}/src/com/dll"
    OBJECT_DEPENDS "${generated}/goodsreq.tlb")
target_link_libraries(goodsreq_dll PRIVATE component win32 com)
version_resource(goodsreq_dll goodsreq.dll VFT_DLL "Goods Request To Shop")

com_dll(sandbox sandbox/host/SandboxServer.cpp)
target_link_libraries(sandbox_dll PRIVATE suite database win32 com)
version_resource(sandbox_dll sandbox.dll VFT_DLL "Stand-ins for the suite and its database")

# The host.
file(GLOB host_sources CONFIGURE_DEPENDS sandbox/host/*.cpp)
list(FILTER host_sources EXCLUDE REGEX "/SandboxServer\\.cpp$")
get_target_property(host_library host SOURCES)
list(TRANSFORM host_library PREPEND ${CMAKE_SOURCE_DIR}/ REGEX "^[^/]")
list(REMOVE_ITEM host_sources ${host_library})
add_executable(goodsreq-host ${host_sources})
# Remote Desktop gives a program that does not know it a Windows folder of its own.
target_link_options(goodsreq-host PRIVATE -static -municode -Wl,--tsaware)
target_link_libraries(goodsreq-host PRIVATE host com win32)
version_resource(goodsreq-host goodsreq-host.exe VFT_APP "Host program for goods requests")

# What is installed where: "product" is a width's folder in dist and in the package, "check" the one in the kit that
# checks a machine, "tryout" the host's folder in the tests. The papers lie above the widths.
set(CMAKE_INSTALL_MESSAGE LAZY)
function(installs components)
    foreach(component IN LISTS components)
        install(FILES ${ARGN} DESTINATION . COMPONENT ${component})
    endforeach()
endfunction()
set(built ${CMAKE_BINARY_DIR})
installs("product;check;tryout" $<TARGET_FILE:sandbox_dll> $<TARGET_FILE:goodsreq-host>
    ${built}/goodsreq.component.manifest ${built}/goodsreq.sandbox.manifest ${built}/goodsreq-host.exe.manifest)
installs("product;check" $<TARGET_FILE:goodsreq_dll> ${built}/goodsreq.suite.manifest)
installs("product;tryout" sandbox/data/ShopSetting.txt)
installs(product ${generated}/goodsreq.tlb ${built}/goodsreq-connect.exe.manifest)
# The same program again, under the name whose manifest leaves ADO to the machine.
install(FILES $<TARGET_FILE:goodsreq-host> DESTINATION . COMPONENT product RENAME goodsreq-connect.exe)
foreach(component product tryout)
    install(DIRECTORY sandbox/data/reports DESTINATION . COMPONENT ${component})
endforeach()
foreach(component product-papers check-papers)
    installs(${component} NOTICES.md)
    install(FILES /usr/share/doc/mingw-w64-common/copyright DESTINATION . COMPONENT ${component}
        RENAME NOTICES-mingw-w64.txt)
endforeach()
installs(product-papers sandbox/data/schema.sql CHANGELOG.md)
install(FILES docs/package.txt DESTINATION . COMPONENT product-papers RENAME README.txt)
# The others are for those who have the sources.
install(DIRECTORY docs DESTINATION . COMPONENT product-papers FILES_MATCHING PATTERN *.md
    PATTERN architecture.md EXCLUDE PATTERN pictures EXCLUDE)
installs(check-papers tests/road/statements.txt)
install(FILES /usr/share/doc/googletest/copyright DESTINATION . COMPONENT check-papers
    RENAME NOTICES-googletest.txt)
# Labels in it are found by whole lines.
configure_file(sandbox/check/check.cmd ${generated}/check.cmd @ONLY NEWLINE_STYLE CRLF)
installs(check-papers ${generated}/check.cmd)
add_custom_target(dist ALL
    COMMAND ${CMAKE_COMMAND} --install ${CMAKE_BINARY_DIR} --component product --prefix ${dist_folder}
    DEPENDS goodsreq_dll sandbox_dll goodsreq-host VERBATIM)

# The host once more, in a folder of its own, with a component that has a way to the dialogs no screen opens. It is not
# delivered.
com_dll(tryout sandbox/tryout/TryoutServer.cpp sandbox/tryout/OpenDialogs.cpp src/com/dll/clsGRtoShop.cpp
    src/com/dll/goodsreq.rc)
set(tryout_folder ${CMAKE_BINARY_DIR}/tryout)
set_target_properties(tryout_dll PROPERTIES OUTPUT_NAME goodsreq LIBRARY_OUTPUT_DIRECTORY ${tryout_folder}
    RUNTIME_OUTPUT_DIRECTORY ${tryout_folder} ARCHIVE_OUTPUT_DIRECTORY ${tryout_folder})
add_dependencies(tryout_dll typelib)
target_link_libraries(tryout_dll PRIVATE component win32 com)
version_resource(tryout_dll goodsreq.dll VFT_DLL "Goods Request To Shop, with a way to two more dialogs")
add_custom_target(tryout ALL
    COMMAND ${CMAKE_COMMAND} --install ${CMAKE_BINARY_DIR} --component tryout --prefix ${tryout_folder}
    DEPENDS tryout_dll sandbox_dll goodsreq-host VERBATIM)

# The tests that run under Windows: one program for each file. None of them tells where it was built.
add_compile_options(-fmacro-prefix-map=${CMAKE_SOURCE_DIR}/=)
find_path(GTEST_SOURCE src/gtest-all.cc PATHS /usr/src/googletest/googletest
    NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH)
file(GLOB windows_tests CONFIGURE_DEPENDS tests/windows/*_test.cpp)
if(BUILD_TESTING AND GTEST_SOURCE)
    add_library(gtest_windows STATIC ${GTEST_SOURCE}/src/gtest-all.cc ${GTEST_SOURCE}/src/gtest_main.cc)
    target_include_directories(gtest_windows SYSTEM PUBLIC ${GTEST_SOURCE}/include PRIVATE ${GTEST_SOURCE})
    target_compile_options(gtest_windows PRIVATE -w)
    foreach(source IN LISTS windows_tests)
        get_filename_component(name ${source} NAME_WE)
        add_executable(${name} ${source})
        target_include_directories(${name} PRIVATE ${generated})
        target_link_options(${name} PRIVATE -static)
        target_link_libraries(${name} PRIVATE com win32 gtest_windows)
        add_dependencies(${name} typelib)
        host_manifest(goodsreq.test ${name}.exe.manifest goodsreq.component goodsreq.sandbox)
        installs(check $<TARGET_FILE:${name}> ${built}/${name}.exe.manifest)
    endforeach()
    # Those who work at the windows.
    add_library(windows_user STATIC tests/windows/RealUser.cpp tests/windows/Session.cpp)
    target_link_libraries(windows_user PUBLIC host com win32 gtest_windows)
    # For a host with another unwinder, which the component must not take for its own.
    if(CMAKE_SIZEOF_VOID_P EQUAL 4)
        foreach(name libgcc_s_dw2-1.dll libwinpthread-1.dll)
            execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${name}
                OUTPUT_VARIABLE file OUTPUT_STRIP_TRAILING_WHITESPACE)
            configure_file(${file} ${CMAKE_BINARY_DIR}/${name} COPYONLY)
            installs(check ${file})
        endforeach()
    endif()
    # The golden slips once more, through the real files and the real code page. They lie beside the program.
    target_sources(slip_test PRIVATE tests/printing/GoldenSlipTest.cpp tests/printing/SlipWorld.cpp
        tests/support/PortableSystem.cpp)
    target_link_libraries(slip_test PRIVATE component suite data)
    target_compile_definitions(slip_test PRIVATE PROJECT_DIR=".")
    add_custom_command(TARGET slip_test POST_BUILD COMMAND ${CMAKE_COMMAND} -E copy_directory
        ${CMAKE_SOURCE_DIR}/tests/printing/golden ${CMAKE_BINARY_DIR}/tests/printing/golden VERBATIM)
    install(DIRECTORY tests/printing/golden DESTINATION tests/printing COMPONENT check)
    foreach(name looks_test context_test desktop_test window_test)
        target_link_libraries(${name} PRIVATE windows_user)
    endforeach()

    # What runs them on a real machine, with that machine's ADO.
    add_executable(goodsreq-check sandbox/check/main.cpp sandbox/check/Facts.cpp sandbox/check/Server.cpp)
    target_link_options(goodsreq-check PRIVATE -static -municode -Wl,--tsaware)
    target_link_libraries(goodsreq-check PRIVATE host com win32)
    installs(check $<TARGET_FILE:goodsreq-check> $<TARGET_FILE:stress-windows>
        ${built}/stress-windows.exe.manifest)

    # The part of the proof that needs the DLL itself.
    function(proof_program name)
        add_executable(${name} ${ARGN} benchmarks/Program.cpp benchmarks/Report.cpp)
        target_link_options(${name} PRIVATE -static)
        target_link_libraries(${name} PRIVATE component data windows_user)
        host_manifest(goodsreq.test ${name}.exe.manifest goodsreq.component goodsreq.sandbox)
    endfunction()
    proof_program(stress-windows endurance/Cases.cpp endurance/windows/main.cpp endurance/windows/Rounds.cpp
        endurance/windows/ClumsyUser.cpp)
    add_custom_command(TARGET stress-windows POST_BUILD COMMAND ${CMAKE_COMMAND} -E copy_if_different
        $<TARGET_FILE:stress-windows> ${CMAKE_BINARY_DIR}/stress-windows.exe.manifest ${tryout_folder} VERBATIM)
    add_dependencies(stress-windows tryout)
    proof_program(bench-windows benchmarks/windows/main.cpp benchmarks/windows/Late.cpp
        benchmarks/windows/WindowTimes.cpp)
endif()

# Calls of every wrong kind to the component and the sandbox's objects, made at random.
add_executable(bridge_fuzz tests/windows/fuzz/bridge_fuzz.cpp)
target_link_options(bridge_fuzz PRIVATE -static)
target_link_libraries(bridge_fuzz PRIVATE com forms database data psapi)
host_manifest(goodsreq.test bridge_fuzz.exe.manifest goodsreq.component goodsreq.sandbox)

if(BUILD_TESTING)
    add_subdirectory(tests/windows)
endif()
