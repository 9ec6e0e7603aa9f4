# shellcheck shell=bash
# Downloads packages and sources of another Debian suite, without installing from it:
# a private apt configuration in the cache folder, made from the mirror and the key
# that the machine's own sources name. The system's sources stay as they are.

# Prints "URI<tab>SUITE<tab>KEYRING" for every Debian archive in the machine's sources, in their order.
debian_archives() {
    local file
    for file in /etc/apt/sources.list /etc/apt/sources.list.d/*.list; do
        [[ -r $file ]] || continue
        awk '$1 == "deb" {
                 key = ""
                 line = $0
                 if (match(line, /signed-by=[^] ]+/)) key = substr(line, RSTART + 10, RLENGTH - 10)
                 sub(/^deb[ \t]+/, "", line)
                 sub(/^\[[^]]*\][ \t]*/, "", line)
                 split(line, word, /[ \t]+/)
                 print word[1] "\t" word[2] "\t" key
             }' "$file"
    done
    for file in /etc/apt/sources.list.d/*.sources; do
        [[ -r $file ]] || continue
        awk 'function flush() {
                 if (uri != "" && types ~ /(^| )deb( |$)/ && tolower(enabled) != "no")
                     print uri "\t" suite "\t" key
                 uri = suite = key = types = enabled = ""
             }
             /^#/ { next }
             /^[ \t]*$/ { flush(); next }
             {
                 field = tolower($1)
                 if (field == "types:") types = substr($0, index($0, ":") + 2)
                 if (field == "enabled:") enabled = $2
                 if (field == "uris:") uri = $2
                 if (field == "suites:") suite = $2
                 if (field == "signed-by:") key = $2
             }
             END { flush() }' "$file"
    done
}

# The archive that serves this machine's own release also serves the others.
debian_mirror() {
    local codename
    codename=$(. /etc/os-release && printf '%s' "${VERSION_CODENAME:-}")
    debian_archives | awk -F '\t' -v release="$codename" \
        '$2 == release || $2 == "stable" { print $1 "\t" $3; exit }'
}

# debian_suite SUITE: makes the private configuration, and prints the path of its apt.conf.
# Its package lists are fetched again after a day, as suites move on.
debian_suite() {
    local suite=$1 home=$CACHE_DOWNLOADS/apt-$1
    mkdir -p "$home"/{lists,archives}/partial
    (
        flock 8
        [[ -z $(find "$home/.updated" -mmin -1440 2>/dev/null) ]] || exit 0
        write_suite_configuration "$suite" "$home"
        quietly "$CACHE_LOGS/apt-$suite.log" apt-get -c "$home/apt.conf" -q update 8>&-
        touch "$home/.updated"
    ) 8>"$home/.lock"
    printf '%s\n' "$home/apt.conf"
}

write_suite_configuration() {
    local suite=$1 home=$2 mirror key options=''
    IFS=$'\t' read -r mirror key < <(debian_mirror) || true
    [[ -n ${mirror:-} ]] || fail "found no Debian archive in /etc/apt to download from"
    [[ -z ${key:-} ]] || options=" [signed-by=$key]"
    printf 'deb%s %s %s main\n' "$options" "$mirror" "$suite" "-src$options" "$mirror" "$suite" \
        >"$home/sources.list"
    : >"$home/status"
    cat >"$home/apt.conf" <<END
Dir::Etc::sourcelist "$home/sources.list";
Dir::Etc::sourceparts "/dev/null";
Dir::Etc::preferences "/dev/null";
Dir::Etc::preferencesparts "/dev/null";
Dir::State::lists "$home/lists";
Dir::State::status "$home/status";
Dir::Cache "$home";
Dir::Cache::archives "$home/archives";
Dir::Cache::pkgcache "";
Dir::Cache::srcpkgcache "";
APT::Architectures { "amd64"; };
APT::Sandbox::User "root";
Acquire::Languages "none";
Acquire::Retries "3";
END
}

# debian_download SUITE FOLDER PACKAGE=VERSION...: puts binary packages into FOLDER.
debian_download() {
    local conf folder=$2
    conf=$(debian_suite "$1")
    shift 2
    mkdir -p "$folder"
    (cd "$folder" && quietly "$CACHE_LOGS/download-$(basename "$folder").log" \
        apt-get -c "$conf" -q download "$@")
}

# debian_download_source SUITE FOLDER PACKAGE=VERSION: puts a source package's files into FOLDER.
debian_download_source() {
    local conf folder=$2
    conf=$(debian_suite "$1")
    mkdir -p "$folder"
    (cd "$folder" && quietly "$CACHE_LOGS/download-$(basename "$folder").log" \
        apt-get -c "$conf" -q source --download-only "$3")
}

# unpack_tar FILE FOLDER: without the folder that everything in the file lies in.
unpack_tar() {
    mkdir -p "$2"
    tar -xf "$1" -C "$2" --strip-components=1
}
