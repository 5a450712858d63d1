#!/usr/bin/env bash
# Starts a throwaway PostgreSQL cluster with PostGIS for trying tzmap on a
# server, loads the sample GeoPackage's layers into it, prints how to reach
# it and waits; Ctrl-C (or the end of the shell) stops the server and
# removes the cluster. The server listens only on a Unix socket in its own
# folder (no TCP port) and trusts only the user "tz" on that socket, so it
# cannot clash with, or expose, any other server on the machine.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=${TZ_BUILD_DIR:-$root/build}
data=$root/sample-data

bin=$(ls -d /usr/lib/postgresql/*/bin 2>/dev/null | sort -V | tail -1)
if [ -z "$bin" ] || [ ! -x "$bin/initdb" ]; then
  echo "PostgreSQL is not installed: run scripts/install-deps.sh first." >&2
  exit 1
fi
if [ ! -f "$data/sample.gpkg" ]; then
  bash "$root/scripts/build.sh" tzmap-sampledata
  "$build/bin/tzmap-sampledata" "$data"
fi

folder=$(mktemp -d /tmp/tzpg-XXXXXX)
as=()
if [ "$(id -u)" -eq 0 ]; then
  # PostgreSQL refuses to run as root.
  chown postgres: "$folder"
  as=(runuser -u postgres --)
fi
cleanup() {
  [ -n "${waiter:-}" ] && kill "$waiter" 2>/dev/null || true
  [ -f "$folder/data/postmaster.pid" ] && "${as[@]}" "$bin/pg_ctl" -D "$folder/data" -m fast -w stop >/dev/null || true
  rm -rf "$folder"
}
trap cleanup EXIT INT TERM

unset PGHOST PGPORT PGUSER PGDATABASE PGSERVICE
"${as[@]}" "$bin/initdb" -D "$folder/data" -U tz -A trust -E UTF8 --locale=C --no-sync >/dev/null
echo "local all tz trust" > "$folder/data/pg_hba.conf"
cat >> "$folder/data/postgresql.conf" <<CONF
listen_addresses = ''
unix_socket_directories = '$folder'
CONF
"${as[@]}" "$bin/pg_ctl" -D "$folder/data" -l "$folder/log" -w start >/dev/null
"$bin/psql" -X -q -h "$folder" -U tz -d postgres -c "CREATE DATABASE tz"
"$bin/psql" -X -q -h "$folder" -U tz -d tz -c "CREATE EXTENSION postgis"
ogr2ogr -f PostgreSQL "PG:host=$folder user=tz dbname=tz" "$data/sample.gpkg" \
  -lco GEOMETRY_NAME=geom -lco SPATIAL_INDEX=GIST

cat <<INFO
PostGIS is running with the sample layers in database "tz".
  Socket folder (the "Host" of a connection): $folder
  User: tz (no password)     Database: tz
  GDAL source: PG:host=$folder user=tz dbname=tz
  psql:        $bin/psql -h $folder -U tz tz
Press Ctrl-C to stop the server and remove it.
INFO
# Waiting in the background lets the trap run as soon as a signal comes.
while true; do sleep 3600 & waiter=$!; wait "$waiter"; done
