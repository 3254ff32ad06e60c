# Reads CTest's JUnit file and prints the numbers of what passed, failed and was skipped; into the file DETAILS goes what
# failed, behind what it printed. A test counts once for each case that it reports, "[ OK ] CASE" or "ok CASE", and at
# least once.
function text(line) {
    gsub(/&lt;/, "<", line); gsub(/&gt;/, ">", line); gsub(/&quot;/, "\"", line); gsub(/&apos;/, "'", line)
    gsub(/&amp;/, "\\&", line)
    return line
}
function attribute(name) {
    match($0, " " name "=\"[^\"]*\"")
    return text(substr($0, RSTART + length(name) + 3, RLENGTH - length(name) - 4))
}
/<testcase / {
    test = attribute("name")
    status = attribute("status")
    ok = bad = lines = 0
    next
}
{
    sub(/^[ \t]*<system-out>/, "")
    output[++lines] = $0
}
/^(\[       OK \]|ok) / { ok++ }
/^(\[  FAILED  \] .* \([0-9]+ ms\)$|FAILED )/ { cases[++bad] = text($0) }
/<\/testcase>/ {
    if (status == "run" && !bad) {
        passed += ok ? ok : 1
    } else if (status == "run" || status == "fail") {
        passed += ok
        failed += bad ? bad : 1
        for (i = lines > 60 ? lines - 60 : 1; i < lines; i++) print "    " text(output[i]) >DETAILS
        if (!bad) print "FAILED " test >DETAILS
        for (i = 1; i <= bad; i++) {
            sub(/^[^A-Za-z]*FAILED *\]? */, "", cases[i])
            print "FAILED " test ": " cases[i] >DETAILS
        }
    } else {
        skipped++
    }
}
END { print passed + 0, failed + 0, skipped + 0 }
