#!/usr/bin/env bash
# Runs a command beside database servers of its own, and stops them whatever becomes of it:
#
#   scripts/servers.sh [--only ENGINES] [--durable] [--disk MEGABYTES] command...
#
#   --only     some of postgresql, mariadb and galera, in one argument with blanks between them; without it all
#   --durable  what is stored outlives a server that is killed; without it they keep nothing safe on the disk
#   --disk     their data lie on a disk of that size in memory, where DOSSIERKIT_SMALL_DISK says so to the
#             command: root alone can have one
#
# The command finds their connection strings in DOSSIERKIT_POSTGRESQL, DOSSIERKIT_MARIADB and DOSSIERKIT_GALERA,
# the last one a cluster of MariaDB with three nodes. They listen on free ports of the loopback alone, with a
# password of this run, as a user without rights; their data lie below build/servers and go with them. A server
# that ends is started again.
set -euo pipefail
usage() {
  sed -n '2,15s/^# \{0,1\}//p' "$0" >&2
  exit 2
}
engines="postgresql mariadb galera"
durable=
disk=
while [ $# -gt 0 ]; do
  case $1 in
    --only) engines=${2-}; shift 2 || usage ;;
    --durable) durable=1; shift ;;
    --disk) disk=${2-}; shift 2 || usage ;;
    --*) usage ;;
    *) break ;;
  esac
done
[ $# -gt 0 ] || usage
[ -e /dev/fd/0 ] || exec </dev/null
for engine in $engines; do
  case $engine in postgresql | mariadb | galera) ;; *) usage ;; esac
done
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
if [ -n "$disk" ]; then
  if [ "$(id -u)" -eq 0 ] && mount -t tmpfs -o "size=${disk}M,mode=755" dossierkit-servers "$data"; then
    export DOSSIERKIT_SMALL_DISK=1
  else
    echo "servers: no small disk, which root alone can have" >&2
    disk=
  fi
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
  # A node that was killed while it brought another one up to date leaves that copying behind.
  local process
  for process in /proc/[0-9]*; do
    ! grep -qsF "$data/" "$process/cmdline" || kill -KILL "${process##*/}" 2>/dev/null || true
  done
  # The last children of a killed server may still be ending.
  for _ in $(seq 120); do
    [ -z "$disk" ] || umount "$data" 2>/dev/null || { sleep 0.5; continue; }
    disk=
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
    [ ! -s "$log" ] || { echo "--- $(basename "$log")"; tail -n 40 "$log"; } >&2
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

password=$(od -An -N12 -tx1 /dev/urandom | tr -d ' \n')
# For one server or node each: its own port, and three more among the nodes of the cluster. Where it can be none of
# those that the system gives to whoever connects to something: a server that comes back must find its own free.
read -r -a ports < <(python3 - <<'PYTHON'
import random
import socket

with open("/proc/sys/net/ipv4/ip_local_port_range") as file:
    given = int(file.read().split()[0])
candidates = range(10000, given if given >= 15000 else 60000)
sockets = []
for port in random.sample(candidates, len(candidates)):
    one = socket.socket()
    try:
        one.bind(("127.0.0.1", port))
    except OSError:
        continue
    sockets.append(one)
    if len(sockets) == 14:
        break
print(*(one.getsockname()[1] for one in sockets))
PYTHON
) || true
[ "${#ports[@]}" -eq 14 ] || { echo "servers: there are no free ports" >&2; exit 1; }
postgresql_port=${ports[12]}
mariadb_port=${ports[13]}
galera_ports=("${ports[@]:0:3}")
group_ports=("${ports[@]:3:3}")
ist_ports=("${ports[@]:6:3}")
sst_ports=("${ports[@]:9:3}")

# wait_until COMPLAINT COMMAND...: until the command succeeds, for longer than any machine needs.
wait_until() {
  local complaint=$1 end=$((SECONDS + 300))
  shift
  while ! "$@"; do
    [ "$SECONDS" -lt "$end" ] || fail "$complaint"
    sleep 0.1
  done
}

# A server that can be connected to may still refuse every statement.
is_postgresql_ready() {
  "$postgresql/pg_isready" --quiet --host=127.0.0.1 --port="$postgresql_port" --username=dossierkit
}
ask_mariadb() {
  MYSQL_PWD=$password mariadb --no-defaults --host=127.0.0.1 --port="$1" --user=dossierkit --connect-timeout=60 --batch \
    --skip-column-names --execute="$2" 2>/dev/null
}
is_mariadb_ready() { [ "$(ask_mariadb "$mariadb_port" 'select 1')" = 1 ]; }
is_node_ready() { [ "$(ask_mariadb "${galera_ports[$1]}" "show status like 'wsrep_ready'")" = $'wsrep_ready\tON' ]; }
wait_for_node() { wait_until "node $1 of the cluster does not join it" is_node_ready "$1"; }

# Runs a server in the background, and again whenever it has ended: a test may stop one.
keep_running() {
  local log=$1
  shift
  (while :; do
    "${as_nobody[@]}" "$@" >>"$log" 2>&1 || true
    sleep 0.2
  done) &
  servers+=($!)
}

start_postgresql() {
  local folder=$data/postgresql settings=(-c wal_level=minimal -c max_wal_senders=0 -c autovacuum=off -c max_connections=300)
  postgresql=$(dirname "$(find_program "$(ls -d /usr/lib/postgresql/*/bin/initdb 2>/dev/null | sort -V | tail -n 1)" \
    /usr/lib/postgresql/15/bin/initdb)")
  [ -n "$durable" ] || settings+=(-c fsync=off -c synchronous_commit=off -c full_page_writes=off)
  # As much as a small disk has room for, and a file is not kept for later.
  [ -z "$disk" ] || settings+=(-c max_wal_size=32MB -c min_wal_size=32MB)
  (umask 077 && printf '%s\n' "$password" >"$data/password")
  [ "$(id -u)" -ne 0 ] || chown nobody: "$data/password"
  "${as_nobody[@]}" env LC_ALL=C "$postgresql/initdb" -D "$folder" -U dossierkit -A scram-sha-256 --pwfile="$data/password" \
    --encoding=UTF8 --locale=C --no-sync >"$data/initdb.log" 2>&1 || fail "initdb failed"
  keep_running "$data/postgresql.log" env LC_ALL=C "$postgresql/postgres" -D "$folder" -c listen_addresses=127.0.0.1 \
    -c port="$postgresql_port" -c unix_socket_directories= "${settings[@]}"
}

# What every server of MariaDB is started with; $1 is the name of its folder, $2 its port.
set_mariadb() {
  local program
  program=$(find_program /usr/sbin/mariadbd)
  # One that starts clears the folder of the temporary files, also of another's.
  "${as_nobody[@]}" mkdir -p "$data/$1.tmp"
  # The program's statements write one table's name in capitals and in small letters.
  mariadb=("$program" --no-defaults --datadir="$data/$1" --port="$2" --bind-address=127.0.0.1
    --socket=../"$1.sock" --pid-file="$data/$1.pid" --tmpdir="$data/$1.tmp" --lower-case-table-names=1 --character-set-server=utf8mb4
    --skip-name-resolve --innodb-log-file-size=32M --innodb-fast-shutdown=2 --innodb-buffer-pool-size=64M --sync-frm=0 --max-connections=300)
  [ -n "$durable" ] || mariadb+=(--innodb-flush-log-at-trx-commit=0 --innodb-doublewrite=0 --innodb-flush-method=nosync)
}

# The folder that those of all servers are copies of.
install_mariadb() {
  local install
  install=$(find_program /usr/bin/mariadb-install-db)
  "${as_nobody[@]}" env HOME="$data" "$install" --no-defaults --datadir="$data/installed" --skip-test-db \
    --innodb-log-file-size=32M --auth-root-authentication-method=normal >"$data/mariadb-install.log" 2>&1 ||
    fail "mariadb-install-db failed"
  (umask 077 && printf "create user if not exists dossierkit@127.0.0.1 identified by '%s';\ngrant all on *.* to dossierkit@127.0.0.1 with grant option;\n" \
    "$password" >"$data/users.sql")
  [ "$(id -u)" -ne 0 ] || chown nobody: "$data/users.sql"
}

start_mariadb() {
  # Where a disk is full, its log must have room.
  cp -a --sparse=never "$data/installed" "$data/mariadb"
  set_mariadb mariadb "$mariadb_port"
  keep_running "$data/mariadb.log" "${mariadb[@]}" --init-file="$data/users.sql"
}

# $1 is the number of the node, from 0.
set_node() {
  local provider
  provider=$(ls /usr/lib/galera/libgalera_smm.so /usr/lib/*/libgalera_smm.so 2>/dev/null | head -n 1 || true)
  [ -n "$provider" ] || fail "galera-4 is missing: ./test --servers installs it"
  [ -n "$(type -P rsync)" ] || fail "rsync is missing: ./test --servers installs it"
  set_mariadb "node$1" "${galera_ports[$1]}"
  # A node that is silent for ten seconds is left out: all are on this machine, which may stand still for some.
  mariadb+=(--performance-schema=OFF --binlog-format=ROW --innodb-autoinc-lock-mode=2 --wsrep-on=ON --wsrep-provider="$provider"
    --wsrep-node-address="127.0.0.1:${group_ports[$1]}" --wsrep-sst-method=rsync
    --wsrep-sst-receive-address="127.0.0.1:${sst_ports[$1]}"
    --wsrep-provider-options="gmcast.listen_addr=tcp://127.0.0.1:${group_ports[$1]};ist.recv_addr=127.0.0.1:${ist_ports[$1]};base_port=${group_ports[$1]};gcache.size=32M;evs.keepalive_period=PT0.5S;evs.suspect_timeout=PT10S;evs.inactive_timeout=PT20S")
}

# Tells it to end as long as it is there.
has_ended() { ! kill "$1" 2>/dev/null; }

start_galera() {
  local node server all="gcomm://127.0.0.1:${group_ports[0]},127.0.0.1:${group_ports[1]},127.0.0.1:${group_ports[2]}"
  # One node alone makes the users and the identity of the cluster; the others begin as copies of it, so that
  # they need nothing sent to them.
  cp -a "$data/installed" "$data/node0"
  set_node 0
  "${as_nobody[@]}" "${mariadb[@]}" --wsrep-cluster-address=gcomm:// --init-file="$data/users.sql" >>"$data/node0.log" 2>&1 &
  server=$!
  servers+=("$server")
  wait_for_node 0
  # One that is still starting does not hear it.
  wait_until "the first node does not end" has_ended "$server"
  wait "$server" || true
  unset 'servers[-1]'
  rm -f "$data"/node0/galera.cache "$data"/node0/gvwstate.dat
  for node in 1 2; do cp -a "$data/node0" "$data/node$node"; done
  # It begins the cluster, and once it was stopped it joins the others as they do.
  set_node 0
  keep_running "$data/node0.log" bash -c 'begun=$1 address=gcomm://
    [ ! -e "$begun" ] || address=$2
    touch "$begun"
    shift 2
    exec "$@" --wsrep-cluster-address="$address"' node "$data/begun" "$all" "${mariadb[@]}"
  wait_for_node 0
  for node in 1 2; do
    set_node "$node"
    keep_running "$data/node$node.log" "${mariadb[@]}" --wsrep-cluster-address="$all"
  done
}

case " $engines " in *" mariadb "* | *" galera "*) install_mariadb ;; esac
for engine in $engines; do "start_$engine"; done
for engine in $engines; do
  case $engine in
    postgresql)
      wait_until "PostgreSQL does not answer" is_postgresql_ready
      export DOSSIERKIT_POSTGRESQL="Driver=PostgreSQL Unicode;Server=127.0.0.1;Port=$postgresql_port;Database=postgres;Uid=dossierkit;Pwd=$password"
      ;;
    mariadb)
      wait_until "MariaDB does not answer" is_mariadb_ready
      export DOSSIERKIT_MARIADB="Driver=MariaDB Unicode;Server=127.0.0.1;Port=$mariadb_port;Database=mysql;Uid=dossierkit;Pwd=$password"
      ;;
    galera)
      for node in 0 1 2; do wait_for_node "$node"; done
      export DOSSIERKIT_GALERA="Driver=MariaDB Unicode;Server=127.0.0.1:${galera_ports[0]},127.0.0.1:${galera_ports[1]},127.0.0.1:${galera_ports[2]};Database=mysql;Uid=dossierkit;Pwd=$password"
      ;;
  esac
done

# A test may stop them.
export DOSSIERKIT_SERVERS_COME_BACK=1
# In the background, so that a signal is heard at once.
"$@" <&0 &
command=$!
code=0
wait "$command" || code=$?
command=  # another process may have its number from now on
exit "$code"
