# Sourced by run and test: installs the Debian packages named as arguments that are missing.
install_packages() {
  local missing=()
  for package in "$@"; do
    [[ $(dpkg-query -W -f='${Status}' "$package" 2>/dev/null) == *'install ok installed'* ]] || missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return 0
  echo "== Installing: ${missing[*]}"
  local as_root=()
  if [ "$(id -u)" -ne 0 ]; then
    as_root=(sudo -n)
    sudo -n true 2>/dev/null || { echo "Please install these packages as root: ${missing[*]}" >&2; return 1; }
  fi
  # Another installation may hold a lock (apt waits for some of them itself), and a mirror may stumble.
  local try
  for try in 1 2 3 4 5 6; do
    [ "$try" -eq 1 ] || { echo "   not yet; trying again ($try of 6)"; sleep 20; }
    "${as_root[@]}" apt-get -o DPkg::Lock::Timeout=300 -qq update </dev/null || true
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -o DPkg::Lock::Timeout=300 -qq -y \
      --no-install-recommends install "${missing[@]}" </dev/null >/dev/null && return 0
  done
  echo "The packages could not be installed: ${missing[*]}" >&2
  return 1
}

build_packages=(g++ cmake ninja-build ccache pkg-config qt6-base-dev libfontconfig-dev libsqlite3-dev sqlite3
  unixodbc-dev fonts-wqy-zenhei)
test_packages=(libgtest-dev libgmock-dev libbenchmark-dev clang-format python3
  xvfb dbus at-spi2-core python3-pyatspi)
# The servers that --servers tests with, and their drivers.
server_packages=(postgresql odbc-postgresql mariadb-server odbc-mariadb galera-4 rsync iproute2)
# What the sanitizers, the static analysis, the fuzz targets and the packages need besides.
check_packages=(clang libclang-rt-dev clang-tidy libjpeg-dev dpkg-dev lintian desktop-file-utils appstream)
# What programs of Windows are built and run with: the compilers, the sources of their libraries, Wine, keys, and what
# makes the Debian of 32 bits.
windows_packages=(g++-mingw-w64-x86-64-posix g++-mingw-w64-i686-posix mingw-w64-tools libwine-dev
  googletest tcl dpkg-dev make wine wine64 xdotool debootstrap)
