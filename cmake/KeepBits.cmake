# The switch of programs that use CorvexMaths: whether they are compiled with its arithmetic flags, so that inline code
# keeps its bits. Included where the library is part of the build, and by its installed package.
#
# A target takes the variable's value as its property when it is made; the property can also be set by itself. A target
# made before this file was included has no property and keeps its bits.
option(CORVEX_KEEP_BITS "Keep programs that use CorvexMaths from fusing multiplications and additions" ON)
define_property(TARGET PROPERTY CORVEX_KEEP_BITS INITIALIZE_FROM_VARIABLE CORVEX_KEEP_BITS
    BRIEF_DOCS "Whether the target is compiled with the arithmetic flags of CorvexMaths")
