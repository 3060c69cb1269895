#!/usr/bin/env bash
# Runs a command beside a PostgreSQL and a MariaDB server of its own, and stops both whatever becomes of it:
#
#   scripts/servers.sh command...
#
# The command finds their connection strings in DOSSIERKIT_POSTGRESQL and DOSSIERKIT_MARIADB. The servers listen
# on free ports of the loopback alone, with a password of this run, as a user without rights; their data lie below
# build/servers and go with them. They keep nothing safe on the disk: they are for tests.
set -euo pipefail
[ $# -gt 0 ] || { sed -n '2,8s/^# \{0,1\}//p' "$0" >&2; exit 2; }
root=$(cd "$(dirname "$(readlink -f "$0")")/.." && pwd)

# What runs a program without rights that ends when this script does, even by a kill that no trap sees.
as_nobody=(setpriv --pdeathsig KILL)
if [ "$(id -u)" -eq 0 ]; then
  as_nobody+=(--reuid=nobody --regid="$(id -g nobody)" --clear-groups)
fi

mkdir -p "$root/build/servers"
data=$(mktemp -d "$root/build/servers/run.XXXXXX")
chmod 755 "$data"
# A clone in a folder that is closed to others.
if ! "${as_nobody[@]}" test -x "$data"; then
  rmdir "$data"
  data=$(mktemp -d)
fi
[ "$(id -u)" -ne 0 ] || chown nobody: "$data"

servers=()
command=
clean_up() {
  local code=$?
  trap - EXIT
  [ -z "$command" ] || kill "$command" 2>/dev/null || true
  # Nothing of theirs is kept.
  [ ${#servers[@]} -eq 0 ] || kill -KILL "${servers[@]}" 2>/dev/null || true
  wait "${servers[@]}" 2>/dev/null || true
  # The last children of a killed server may still be ending.
  for _ in 1 2 3 4 5; do
    rm -rf "$data" 2>/dev/null && break
    sleep 0.5
  done
  exit "$code"
}
trap clean_up EXIT
trap 'exit 129' HUP
trap 'exit 130' INT
trap 'exit 143' TERM

fail() {
  echo "servers: $*" >&2
  for log in "$data"/*.log; do
    [ ! -s "$log" ] || { echo "--- $(basename "$log")"; tail -n 20 "$log"; } >&2
  done
  exit 1
}

# Programs that Debian does not put on everybody's path.
find_program() {
  local file
  for file in "$@"; do
    [ ! -x "$file" ] || { echo "$file"; return; }
  done
  fail "${*: -1} is missing: ./test --servers installs it"
}
postgres=$(dirname "$(find_program "$(ls -d /usr/lib/postgresql/*/bin/initdb 2>/dev/null | sort -V | tail -n 1)" \
  /usr/lib/postgresql/15/bin/initdb)")
mariadbd=$(find_program /usr/sbin/mariadbd)
mariadb_install=$(find_program /usr/bin/mariadb-install-db)

password=$(od -An -N12 -tx1 /dev/urandom | tr -d ' \n')
read -r postgres_port mariadb_port < <(python3 - <<'PYTHON'
import socket
sockets = [socket.socket() for _ in range(2)]
for one in sockets:
    one.bind(("127.0.0.1", 0))
print(*(one.getsockname()[1] for one in sockets))
PYTHON
)

wait_for() {
  local name=$1 port=$2
  for _ in $(seq 300); do
    if (exec 3<>"/dev/tcp/127.0.0.1/$port") 2>/dev/null; then return; fi
    sleep 0.1
  done
  fail "$name does not answer"
}

# Starts a server in the background, and again whenever it has ended: a test may stop one.
keep_running() {
  local log=$1
  shift
  (while :; do
    "${as_nobody[@]}" "$@" >>"$log" 2>&1 || true
    sleep 0.5
  done) &
  servers+=($!)
}

start_postgresql() {
  local folder=$data/postgresql
  (umask 077 && printf '%s\n' "$password" >"$data/password")
  [ "$(id -u)" -ne 0 ] || chown nobody: "$data/password"
  "${as_nobody[@]}" env LC_ALL=C "$postgres/initdb" -D "$folder" -U dossierkit -A scram-sha-256 --pwfile="$data/password" \
    --encoding=UTF8 --locale=C --no-sync >"$data/initdb.log" 2>&1 || fail "initdb failed"
  keep_running "$data/postgresql.log" env LC_ALL=C "$postgres/postgres" -D "$folder" -c listen_addresses=127.0.0.1 -c port="$postgres_port" \
    -c unix_socket_directories= -c fsync=off -c synchronous_commit=off -c full_page_writes=off \
    -c wal_level=minimal -c max_wal_senders=0 -c autovacuum=off
}

start_mariadb() {
  local folder=$data/mariadb
  "${as_nobody[@]}" env HOME="$data" "$mariadb_install" --no-defaults --datadir="$folder" --skip-test-db \
    --auth-root-authentication-method=normal >"$data/mariadb-install.log" 2>&1 || fail "mariadb-install-db failed"
  (umask 077 && printf "create user if not exists dossierkit@127.0.0.1 identified by '%s';\ngrant all on *.* to dossierkit@127.0.0.1 with grant option;\n" \
    "$password" >"$data/users.sql")
  [ "$(id -u)" -ne 0 ] || chown nobody: "$data/users.sql"
  # The program's statements write one table's name in capitals and in small letters.
  keep_running "$data/mariadb.log" "$mariadbd" --no-defaults --datadir="$folder" --port="$mariadb_port" --bind-address=127.0.0.1 \
    --socket=mariadb.sock --pid-file="$data/mariadb.pid" --init-file="$data/users.sql" --lower-case-table-names=1 \
    --character-set-server=utf8mb4 --skip-name-resolve --innodb-flush-log-at-trx-commit=0 --innodb-doublewrite=0 --innodb-flush-method=nosync --sync-frm=0 \
    --innodb-fast-shutdown=2 --innodb-log-file-size=32M
}

start_postgresql
start_mariadb
wait_for PostgreSQL "$postgres_port"
wait_for MariaDB "$mariadb_port"

export DOSSIERKIT_POSTGRESQL="Driver=PostgreSQL Unicode;Server=127.0.0.1;Port=$postgres_port;Database=postgres;Uid=dossierkit;Pwd=$password"
# A test may stop them.
export DOSSIERKIT_SERVERS_COME_BACK=1
export DOSSIERKIT_MARIADB="Driver=MariaDB Unicode;Server=127.0.0.1;Port=$mariadb_port;Database=mysql;Uid=dossierkit;Pwd=$password"
# In the background, so that a signal is heard at once.
"$@" <&0 &
command=$!
wait "$command"
