#!/bin/sh
# check-manual.sh [DIR]: has the manual pages of a build, by default of the release build, read by two formatters that
# complain about whatever they do not understand (a page is of a version and has no date), and the completions by their
# shells where these are installed.
set -eu
share=${1:-"$(cd "$(dirname "$0")/.." && pwd)/build/release/share"}
failed=0
complain() {
    if [ -n "$2" ]; then
        printf '%s\n%s\n' "$1" "$2" >&2
        failed=1
    fi
}
count=0
for page in "$share"/man/man1/*; do
    count=$((count + 1))
    text=$(zcat -f "$page")
    complain "$page (mandoc)" "$(printf '%s\n' "$text" | mandoc -T lint -W warning 2>&1 | grep -v 'missing date' || true)"
    [ -z "$(command -v groff || true)" ] ||
        complain "$page (groff)" "$(printf '%s\n' "$text" | groff -man -Tutf8 -ww -z 2>&1 || true)"
done
for shell in bash zsh fish; do
    case $shell in
        bash) file=bash-completion/completions/corvex ;;
        zsh) file=zsh/site-functions/_corvex ;;
        fish) file=fish/vendor_completions.d/corvex.fish ;;
    esac
    [ -z "$(command -v $shell || true)" ] || complain "$file" "$($shell -n "$share/$file" 2>&1 || true)"
done
if [ -n "$(command -v fish || true)" ]; then  # where it knows no options, it has to be told by other means
    answer=$(fish -c 'source $argv; complete -C "corvex args -- -vcodec mj"' "$share/$file" 2>&1 | cut -f 1)
    [ "$answer" = mjpeg ] || complain "$file (behind args --)" "expected mjpeg, not: $answer"
fi
echo "$count manual pages"
[ "$count" -gt 0 ] && [ "$failed" -eq 0 ]
