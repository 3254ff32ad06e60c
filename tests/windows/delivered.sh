# What lies in dist: the DLLs' bits, their undecorated exports, nothing imported but the system's own, and the guards of
# tools/check-delivered.sh.
wrong=0

expectText() {
    if [ "$2" != "$3" ]; then
        printf '%s: expected\n%s\nfound\n%s\n' "$1" "$2" "$3"
        wrong=1
    fi
}

exported() {
    x86_64-w64-mingw32-objdump -p "$1" | sed -n '/Ordinal\/Name Pointer/,/^$/p' | sed -nE "s/^[[:space:]]*\[ *[0-9]+\] (.*)/\1/p" | sort
}

# Import libraries that Windows does not have itself.
foreign() {
    x86_64-w64-mingw32-objdump -p "$1" | sed -nE 's/^\tDLL Name: //p' | tr '[:upper:]' '[:lower:]' |
        grep -vxE '(kernel32|user32|gdi32|advapi32|ole32|oleaut32|comctl32|comdlg32|shell32|uxtheme|msvcrt|ntdll|winspool)\.(dll|drv)' || true
}

# Imports that the least Windows, 7, does not have, so that the file would not load there: what came after it to the libraries
# above. Such a function is looked up at run time, where it is used at all.
newer="AreDpiAwarenessContextsEqual|AdjustWindowRectExForDpi|CoIncrementMTAUsage|CopyFile2|CreateFile2|CreateFileFromAppW|\
DiscardVirtualMemory|EnableMouseInPointer|EnableNonClientDpiScaling|GetCurrentPackage.*|GetCurrentThreadStackLimits|GetDpiFor.*|\
GetDpiAwarenessContextForProcess|GetFirmwareType|GetOverlappedResultEx|GetPackage.*|GetPointer.*|GetProcessMitigationPolicy|\
GetSystemDpiForProcess|GetSystemMetricsForDpi|GetSystemTimePreciseAsFileTime|GetTempPath2[AW]|GetThreadDescription|\
GetThreadDpi.*|GetThreadInformation|GetWindowDpi.*|IsValidDpiAwarenessContext|IsWow64Process2|LoadPackagedLibrary|\
LogicalToPhysicalPointForPerMonitorDPI|MapViewOfFile[3F].*|OpenThemeDataForDpi|PrefetchVirtualMemory|\
QueryUnbiasedInterruptTimePrecise|SetDefaultDllDirectories|AddDllDirectory|RemoveDllDirectory|\
SetDialog.*Dpi.*|SetProcessDpiAwarenessContext|SetProcessMitigationPolicy|SetThread(Description|Dpi.*|Information)|\
SystemParametersInfoForDpi|VirtualAlloc2.*|WaitOnAddress|WakeByAddress(All|Single)"

tooNew() {
    x86_64-w64-mingw32-objdump -p "$1" | sed -nE 's/^\t[0-9a-f]+\t +[0-9]+ +([A-Za-z_0-9]+)$/\1/p' | grep -xE "$newer" || true
}

format() {
    x86_64-w64-mingw32-objdump -f "$1" | sed -n 's/.*file format //p'
}

version=$(sed -nE 's/^project\(goodsreq VERSION ([0-9.]+).*/\1/p' "$root/CMakeLists.txt")
entries=$'DllCanUnloadNow\nDllGetClassObject\nDllInstall\nDllRegisterServer\nDllUnregisterServer'
kind=pei-x86-64
[ "$WIDTH" = x64 ] || kind=pei-i386
for file in goodsreq.dll sandbox.dll goodsreq-host.exe; do
    [ -f "$DIST/$file" ] || {
        echo "$DIST has no $file"
        wrong=1
        continue
    }
    name=$WIDTH/$file
    expectText "$name, format" "$kind" "$(format "$DIST/$file")"
    expectText "$name, imports of others" "" "$(foreign "$DIST/$file")"
    expectText "$name, imports that Windows 7 lacks" "" "$(tooNew "$DIST/$file")"
    # The version stands in the file's properties as text of 16-bit letters.
    expectText "$name, version" "$version" "$(strings -el -n 3 "$DIST/$file" | grep -A 1 -x ProductVersion | tail -n 1)"
    [[ $file == *.exe ]] || expectText "$name, exports" "$entries" "$(exported "$DIST/$file")"
done
"$root/tools/check-delivered.sh" "$DIST"/*.dll "$DIST"/*.exe || wrong=1
# The type library is resource 1 of the component; its file format starts with MSFT.
grep -qaF MSFT "$DIST/goodsreq.dll" || {
    echo "$WIDTH/goodsreq.dll carries no type library"
    wrong=1
}
[ "$wrong" -eq 0 ]
