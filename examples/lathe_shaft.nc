(LATHE SHAFT - sample lathe program)
(Turns a stepped shaft from bar stock of 40 mm diameter.)
(X words are diameters and Z runs along the axis: Z0 is the faced end)
(and the part lies towards minus Z. I and K give the arc centre from)
(the start of the arc: I across the axis as a radius and K along it.)
(Select the lathe setting under Options - Properties before opening.)
(Finished profile: chamfer 1 x 45 deg - diameter 20 up to Z-15.)
(- fillet of radius 3 into a face at Z-18. - diameter 30 up to Z-35.)
(- face with a round of radius 2 - diameter 38 up to Z-55.)
(Units: mm.)
N10 G18 G21 G90
N20 G0 X50. Z10.

(--- Tool 1: roughing tool ---)
N30 T0101
N40 M3 S1200
N50 G0 X42. Z0. (facing pass)
N60 G1 X-1.6 F0.2
N70 G0 Z2.
N80 X38.5 (roughing passes leave 0.5 mm on diameters)
N90 G1 Z-55. F0.3
N100 X41.
N110 G0 Z2.
N120 X34.5
N130 G1 Z-34.8
N140 X39.
N150 G0 Z2.
N160 X30.5
N170 G1 Z-34.8
N180 X35.
N190 G0 Z2.
N200 X26.5
N210 G1 Z-17.8
N220 X31.
N230 G0 Z2.
N240 X22.5
N250 G1 Z-17.2 (shorter: the fillet starts here)
N260 X27.
N270 G0 Z2.
N280 X20.5
N290 G1 Z-16.
N300 X23.
N310 G0 X50. Z10.
N320 M5

(--- Tool 2: finishing tool ---)
N330 T0202
N340 M3 S1800
N350 G0 X14. Z1.
N360 G1 Z0. F0.1
N370 X18.
N380 X20. Z-1. (chamfer)
N390 Z-15.
N400 G2 X26. Z-18. I3. K0. (fillet: centre at diameter 26 and Z-15.)
N410 G1 X30.
N420 Z-35.
N430 X34.
N440 G3 X38. Z-37. I0. K-2. (round: centre at diameter 34 and Z-37.)
N450 G1 Z-55.
N460 X42.
N470 G0 X50. Z10.
N480 M5
N490 M30
