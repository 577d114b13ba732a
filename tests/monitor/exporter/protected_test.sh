#!/bin/bash
# The built monitor as an exporter with a certificate and users, from outside.
# Usage: protected_test.sh MONITOR

monitor=$(realpath "$1")
# shellcheck source=tests/monitor/exporter/outside.sh
. "$(dirname "$0")/outside.sh"
# status CURL-ARGUMENT...: prints the status of an answer, or curl's own if there is none.
status() { curl -sS --max-time 60 -o body -w '%{http_code}' "$@" 2>curl.err || echo "curl $?"; }
# refuses STATUS PATTERN ARGUMENT...: expects one line that matches, and the end before it listens.
refuses() {
  timeout 60 "$monitor" --machine M1 --listen 0 "${@:3}" >out 2>err
  local status=$?
  [ $status = "$1" ] || fail "${*:3}: exit status $status"
  [ "$(wc -l <err)" = 1 ] && grep -qE "^halvermonte-monitor: $2\$" err || fail "${*:3}: $(cat err)"
}

for name in one other; do
  openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -days 2 -subj /CN=localhost \
    -addext subjectAltName=DNS:localhost,IP:127.0.0.1 -keyout $name.key -out $name.pem 2>openssl.err || fail "$(cat openssl.err)"
done
openssl ec -in one.key -aes128 -passout pass:secret -out locked.key 2>openssl.err || fail "$(cat openssl.err)"
# htpasswd -nbB -C 5 ann 'one: two'
echo 'ann:$2y$05$WsHcPnRRBAcSfGphcUQCsugX4eNwxW7qPAop02Ph8ItuSQhPdpSnu' >users
echo 'ann:{SHA}NWoZK3kTsExUV00Ywo1G5jlUKKs=' >sha
echo text >text
: >empty

# HTTPS, for users
tls=(--tls-certificate one.pem --tls-key one.key)
start 0 --machine M1 "${tls[@]}" --users users
case $url in https://127.0.0.1:*) ;; *) fail "the address is $url" ;; esac
trust=(--cacert one.pem)
[ "$(status "${trust[@]}" -u 'ann:one: two' "${url}metrics")" = 200 ] || fail "a user's scrape: $(cat curl.err)"
grep -q '^hw_temperature_celsius{' body || fail "the scrape is $(head -c 200 body)"
[ "$(status "${trust[@]}" -u 'ann:one' "${url}metrics")" = 401 ] || fail "a wrong password is taken"
[ "$(status "${trust[@]}" "${url}health")" = 401 ] || fail "nobody's health check is answered"
grep -q halvermonte body && fail "a stranger reads: $(cat body)"
[ "$(status --cacert other.pem "${url}metrics")" = '000curl 60' ] || fail "another certificate serves"
[ "$(status "${trust[@]}" --tls-max 1.1 --ciphers 'DEFAULT@SECLEVEL=0' "${url}metrics")" = '000curl 35' ] || fail "TLS 1.1 is taken"
[ "$(status "http://${url#https://}metrics")" = 200 ] && fail "it serves without TLS"
stop

# Beyond loopback there is a warning unless it has both.
start 0.0.0.0:0 --machine M1 "${tls[@]}" --users users
[ "$(wc -l <err)" = 1 ] || fail "with both it says: $(cat err)"
stop
start 0.0.0.0:0 --machine M1 --users users
[ "$(grep -c ': warning: passwords cross the network' err)" = 1 ] || fail "without TLS it says: $(cat err)"
[ "$(wc -l <err)" = 2 ] || fail "without TLS it says: $(cat err)"
stop
start 0.0.0.0:0 --machine M1 "${tls[@]}"
[ "$(grep -c ': warning: whoever reaches the port' err)" = 1 ] || fail "without users it says: $(cat err)"
stop
start 0 --machine M1 --users users
[ "$(wc -l <err)" = 1 ] || fail "on loopback it says: $(cat err)"
stop

refuses 1 '--tls-certificate none: No such file or directory' --tls-certificate none --tls-key one.key
refuses 1 '--tls-key none: No such file or directory' --tls-certificate one.pem --tls-key none
refuses 1 '--tls-certificate empty: is empty or unreadable' --tls-certificate empty --tls-key one.key
refuses 2 '--tls-certificate text: expected a certificate in PEM' --tls-certificate text --tls-key one.key
refuses 2 '--tls-certificate one.key: expected a certificate in PEM' --tls-certificate one.key --tls-key one.key
refuses 2 '--tls-key one.pem: expected a private key in PEM without a password' --tls-certificate one.pem --tls-key one.pem
refuses 2 '--tls-key locked.key: expected a private key in PEM without a password' --tls-certificate one.pem --tls-key locked.key
refuses 2 '--tls-key other.key: is not the key of one.pem' --tls-certificate one.pem --tls-key other.key
refuses 1 '--users none: No such file or directory' --users none
refuses 2 '--users empty: has no user' --users empty
refuses 2 '--users sha:1: expected NAME:HASH with a hash of bcrypt, as htpasswd -B writes it' --users sha

finish
