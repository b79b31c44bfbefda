# The font list: an alias and what it stands for, the rest of the line.
# A name without a line here stands for itself.
default modern.fnt
modern modern.fnt
sans modern.fnt
light light.fnt
narrow light.fnt
italic italic.fnt
bold bold.fnt
serif serif.fnt
roman serif.fnt
serifitalic serifitalic.fnt
water serifitalic.fnt
mono mono.fnt
fixed mono.fnt
