#!/bin/sh
# Fails if a function of the library calls itself, at once or by way of others: how deep calls go must not depend on the
# data, since no exception tells of a stack that runs out. The walks of TSetGenerator go as deep as their sets are large,
# and say so. What goes down a tree or halves its work is at most as deep as a number has bits.
#
#   no_recursion.sh LIBRARY [OBJDUMP]
set -eu

"${2:-objdump}" -d --no-show-raw-insn "$1" | awk '
    function is_bounded(name) {
        return name ~ /^_ZSt/ ||
            name ~ /TSetGenerator.*(Combinate|Permute)/ ||
            name ~ /SearchGroup|SearchSides|MeasureAfterSplit|EdgeTree.*(Join|SearchBelow)/ || # boxes in groups
            name ~ /NearestSearch.*(Build|Descend)|UniteGroups|VertexTree.*(Build|IsAnyIn)/ ||            # halves and sixteenths of what there is
            name ~ /SearchPiece|AppendPieces/                              # halves of a span, up to a depth of its own
    }
    /^[0-9a-f]+ <.*>:$/ { caller = substr($2, 2, length($2) - 3); next }
    # A jump to another function is a call at the end of this one.
    match($0, /\t(call|bl|jmp|b) +[0-9a-f]+ <[^+>]+>/) {
        callee = $0
        gsub(/.*<|>.*/, "", callee)
        if (callee ~ /@plt$/ || (caller, callee) in known) next
        if (callee == caller && ($0 !~ /\t(call|bl) / || is_bounded(caller))) next
        if (callee == caller) { print "calls itself: " caller; fails = 1; next }
        known[caller, callee] = 1
        callers[callee] = callers[callee] " " caller
        ++callees[caller]
        ++calls
    }
    END {
        if (calls < 1000) { print "only " calls + 0 " calls found: the disassembly cannot be trusted"; exit 1 }
        # What calls nothing is taken out again and again; what is left calls itself, or calls what does.
        for (name in callers) if (!callees[name]) free[++last] = name
        for (at = 1; at <= last; ++at) {
            count = split(callers[free[at]], names, " ")
            for (i = 1; i <= count; ++i) if (--callees[names[i]] == 0) free[++last] = names[i]
        }
        for (name in callees)
            if (callees[name] > 0) { print "calls itself by way of others, or calls what does: " name; fails = 1 }
        exit fails
    }'
