#!/bin/sh
# A fused multiply-add rounds once where two roundings are promised: the library may hold none.
#
#   no_fused_arithmetic.sh LIBRARY [OBJDUMP]
set -eu
# x86 (vfmadd...), 64-bit Arm (fmadd, fmla), riscv64 (fmadd.d), ppc64le (fmadd, xsmaddadp, vmaddfp), 32-bit Arm (vfma.f64)
# and s390x (madbr, wfmadb). A vmla of 32-bit Arm rounds twice, and vfmdb of s390x is a product.
fused='^ *[0-9a-f]+:[[:space:]]+(v?fn?m(add|sub)|fml[as]|x[sv]n?m(add|sub)|vn?m(add|sub)fp|vfn?m[as][a-z]{0,2}\.f'
fused="$fused|m[as][de]br?[[:space:]]|[vw]fn?m[as][sdx]b)"

# The pattern is held to one line of each kind, and to lines that look alike.
for mnemonic in vfmadd213sd vfmsub231ps vfnmadd132sd vfnmsub213ss vfmaddsub132pd fmadd fmsub fnmadd fnmsub fmla fmls \
    fmadd.d fnmsub.s fmadds xsmaddadp xvnmsubmsp vmaddfp vnmsubfp vfma.f64 vfnms.f32 vfmaeq.f64 madbr msebr madb \
    wfmadb vfmssb wfnmasb; do
    printf '   1a2b:\t%s %%xmm0,%%xmm1,%%xmm2\n' "$mnemonic" | grep -qE "$fused" || {
        echo "the pattern passes over $mnemonic"
        exit 1
    }
done
for mnemonic in mulsd addsd vmulpd fmul fmov vmovapd fmul.d xsmuldp maddld vmsumuhm vmul.f64 vmla.f32 vfmdb wfmsb msgr \
    meebr mdbr; do
    if printf '   1a2b:\t%s %%xmm0,%%xmm1,%%xmm2\n' "$mnemonic" | grep -qE "$fused"; then
        echo "the pattern takes $mnemonic for a fused operation"
        exit 1
    fi
done

listing=$(mktemp)
trap 'rm -f "$listing"' EXIT
"${2-objdump}" -d --no-show-raw-insn "$1" >"$listing"
grep -qE '^ *[0-9a-f]+:[[:space:]]+(v?mul[sp][sd]|fmul|x[sv]mul|vmul\.f|m(ee|d)br?[[:space:]])' "$listing" || {
    echo "no multiplication found: the disassembly cannot be trusted"
    exit 1
}
if grep -E "$fused" "$listing"; then
    exit 1
fi
