#!/usr/bin/env bash
# Installs the build folder into a temporary prefix and builds the Debian package from it, then
# checks what a student's desktop relies on: every file where the desktop and the program look
# for it, a valid menu entry and file type, a package holding the same files with the
# libraries it needs, and an ampora-cli, installed and from the package, that reads a shipped
# example and makes its report with the drawing program installed for it.
set -euo pipefail

build_dir="$(cd "$1" && pwd)"
source_dir="$(cd "$2" && pwd)"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT

fail() {
    echo "FAIL: $*" >&2
    exit 1
}

# Files are listed relative to the prefix, one per line, sorted, so a failure shows the whole
# difference.
list_files() { (cd "$1" && find . -type f -o -type l | sed 's|^\./||' | LC_ALL=C sort); }

echo "== install into a temporary prefix"
prefix="$work/prefix"
cmake --install "$build_dir" --prefix "$prefix" >/dev/null

expected="$work/expected.txt"
{
    echo bin/ampora
    echo bin/ampora-cli
    echo libexec/ampora/ampora-cli-report
    echo share/applications/ampora.desktop
    echo share/mime/packages/ampora.xml
    for context_name in apps/ampora mimetypes/application-x-ampora-circuit; do
        echo "share/icons/hicolor/scalable/$context_name.svg"
        for size in 16 22 24 32 48 64 128 256; do
            echo "share/icons/hicolor/${size}x${size}/$context_name.png"
        done
    done
    (cd "$source_dir" && find help -type f | sed 's|^|share/ampora/|')
    (cd "$source_dir" && find examples -name '*.amq' | sed 's|^|share/ampora/|')
} | LC_ALL=C sort >"$expected"
list_files "$prefix" >"$work/installed.txt"
diff -u "$expected" "$work/installed.txt" || fail "the installed files differ from the list above"
diff -r "$source_dir/help" "$prefix/share/ampora/help" || fail "installed help pages differ"
grep -q 'share/ampora/help/index.htm' "$expected" || fail "the help pages are missing from the source"

for size in 16 48 256; do
    png="$prefix/share/icons/hicolor/${size}x${size}/apps/ampora.png"
    # Bytes 17..24 of a PNG are its width and height, each four bytes big-endian.
    dims="$(od -An -tu4 --endian=big -j16 -N8 "$png" | tr -s ' ' | sed 's/^ //')"
    [[ "$dims" == "$size $size" ]] || fail "$png is not ${size}x$size: $dims"
done

# The installed ampora-cli finds the program that draws its report under libexec, not in the
# build folder.
echo "== ampora-cli report, installed"
"$prefix/bin/ampora-cli" report "$prefix/share/ampora/examples/supernode.amq" -o "$work/r.html" ||
    fail "the installed ampora-cli made no report"
grep -q '<img src="data:image/png;base64,' "$work/r.html" || fail "the report has no pictures"
mv "$prefix/libexec/ampora/ampora-cli-report" "$work/moved-away"
if "$prefix/bin/ampora-cli" report "$prefix/share/ampora/examples/supernode.amq" \
    -o "$work/r2.html" 2>"$work/missing.txt"; then
    fail "ampora-cli made a report without its drawing program"
fi
grep -q "^ampora-cli: the program that draws the report is missing; it was looked for as $prefix/libexec/ampora/ampora-cli-report and $prefix/bin/ampora-cli-report\$" \
    "$work/missing.txt" || fail "unexpected message: $(cat "$work/missing.txt")"
mv "$work/moved-away" "$prefix/libexec/ampora/ampora-cli-report"

echo "== desktop entry and file type"
desktop="$prefix/share/applications/ampora.desktop"
desktop-file-validate "$desktop" || fail "desktop-file-validate rejects ampora.desktop"
mime_xml="$prefix/share/mime/packages/ampora.xml"
xmllint --noout "$mime_xml" || fail "ampora.xml is not well-formed XML"
grep -qx 'MimeType=application/x-ampora-circuit;' "$desktop" || fail "menu entry lacks the type"
grep -qx 'Exec=ampora %f' "$desktop" || fail "menu entry does not hand the file to the program"
grep -qx 'Icon=ampora' "$desktop" || fail "menu entry names another icon"
# Compiling the type into a database, as the desktop's trigger does, proves the glob and icon.
update-mime-database "$prefix/share/mime" >/dev/null 2>&1 || fail "update-mime-database failed"
grep -qx 'application/x-ampora-circuit:\*\.amq' "$prefix/share/mime/globs" ||
    fail "the MIME database does not map *.amq: $(cat "$prefix/share/mime/globs")"
grep -qx 'application/x-ampora-circuit:application-x-ampora-circuit' "$prefix/share/mime/icons" ||
    fail "the MIME database gives .amq files another icon: $(cat "$prefix/share/mime/icons")"

echo "== Debian package"
cpack -G DEB --config "$build_dir/CPackConfig.cmake" -B "$work/package" >"$work/cpack.log" 2>&1 ||
    { cat "$work/cpack.log"; fail "cpack failed"; }
deb="$(find "$work/package" -maxdepth 1 -name 'ampora_*.deb')"
[[ -f "$deb" ]] || fail "no ampora_*.deb in $(ls "$work/package")"
# Each line: mode, owner, size, date, time, then the path (which may hold blanks).
dpkg-deb -c "$deb" | sed -E 's/^([^ ]+ +){5}//' | grep -v '/$' | sed 's|^\./usr/||' |
    LC_ALL=C sort >"$work/packaged.txt"
diff -u "$expected" "$work/packaged.txt" || fail "the package's files differ from the list above"

depends="$(dpkg-deb -f "$deb" Depends)"
for needed in libqt6widgets6 libqt6svg6 libstdc++6 fonts-liberation; do
    [[ ", $depends," == *", $needed "* || ", $depends," == *", $needed,"* ]] ||
        fail "Depends lacks $needed: $depends"
done
[[ "$(dpkg-deb -f "$deb" Package)" == ampora ]] || fail "the package is not named ampora"

echo "== ampora-cli from the unpacked package"
root="$work/root"
dpkg -x "$deb" "$root"
"$root/usr/bin/ampora-cli" check "$root/usr/share/ampora/examples/voltage_divider.amq" \
    >"$work/check.json" || fail "ampora-cli check failed on the packaged example"
grep -q '"complete": true' "$work/check.json" || fail "ampora-cli did not read the whole file"
"$root/usr/bin/ampora-cli" report "$root/usr/share/ampora/examples/voltage_divider.amq" \
    -o "$work/packaged.pdf" || fail "ampora-cli report failed from the package"
[[ "$(head -c 5 "$work/packaged.pdf")" == "%PDF-" ]] || fail "the packaged report is not a PDF"
echo "package: $(basename "$deb"), $(wc -l <"$work/packaged.txt") files"
