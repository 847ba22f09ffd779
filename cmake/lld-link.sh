#!/bin/sh
# lld-link.sh LLD COLLECT2 ARGUMENT...: what g++ for Windows runs in place of its own linker when it is told "-wrapper lld-link.sh,LLD":
# lld with the same arguments. Another linker by -fuse-ld is not looked for by a g++ that was built with its linker's full path.
lld="$1"
shift 2
exec "$lld" "$@"
