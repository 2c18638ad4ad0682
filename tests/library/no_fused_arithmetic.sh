#!/bin/sh
# A fused multiply-add rounds once where two roundings are promised: the library may hold none.
#
#   no_fused_arithmetic.sh LIBRARY [OBJDUMP]
set -eu
fused='^ *[0-9a-f]+:[[:space:]]+(v?fn?m(add|sub)|fml[as])'

# The pattern is held to one line of each kind, and to lines that look alike.
for mnemonic in vfmadd213sd vfmsub231ps vfnmadd132sd vfnmsub213ss vfmaddsub132pd fmadd fmsub fnmadd fnmsub fmla fmls; do
    printf '   1a2b:\t%s %%xmm0,%%xmm1,%%xmm2\n' "$mnemonic" | grep -qE "$fused" || {
        echo "the pattern passes over $mnemonic"
        exit 1
    }
done
for mnemonic in mulsd addsd vmulpd fmul fmov vmovapd; do
    if printf '   1a2b:\t%s %%xmm0,%%xmm1,%%xmm2\n' "$mnemonic" | grep -qE "$fused"; then
        echo "the pattern takes $mnemonic for a fused operation"
        exit 1
    fi
done

listing=$(mktemp)
trap 'rm -f "$listing"' EXIT
"${2-objdump}" -d --no-show-raw-insn "$1" >"$listing"
grep -qE '^ *[0-9a-f]+:[[:space:]]+(v?mul[sp][sd]|fmul)' "$listing" || {
    echo "no multiplication found: the disassembly cannot be trusted"
    exit 1
}
if grep -E "$fused" "$listing"; then
    exit 1
fi
