#!/usr/bin/env bash
# Runs a Windows program under Wine, without Wine's remarks and without the two components
# that it would ask to download.
export WINEDEBUG=${WINEDEBUG:--all} WINEARCH=win64 WINEDLLOVERRIDES="mscoree=;mshtml="

# The first program of a session starts Wine's services, which outlive it and keep what it
# writes to open: whoever reads that would wait for them.
wine cmd /c exit </dev/null >/dev/null 2>&1
exec wine "$@"
