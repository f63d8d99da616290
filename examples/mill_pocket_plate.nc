(MILL POCKET PLATE - sample milling program)
(A plate of 120 x 80 mm: two pockets with rounded corners, a bore)
(of 16 mm diameter and the outside profile, cut with three tools.)
(It shows straight cuts, arcs given by I and J and arcs given by R)
(- a positive R for arcs up to half a turn and a negative R for a)
(longer arc - a full circle, a helical entry and rapids between features.)
(Units: mm. Origin: lower left corner of the plate. Z0 is the top face.)
(Every coordinate carries a decimal point: X25 without one means 0.0025.)
N10 G21 G17 G90
N20 G0 Z5.

(--- Tool 1: 6 mm end mill - pocket 1 and pocket 2 ---)
N30 T1 M6
N40 M3 S6000
(Pocket 1: 40 x 50 mm with 6 mm corner radii, 5 mm deep)
N50 G0 X31.5 Y31.5 (above the middle of pocket 1)
N60 Z1.
N70 G1 Z-5. F100. (plunge)
N80 X38.5 F400. (clearing, first ring)
N90 Y48.5
N100 X31.5
N110 Y31.5
N120 X27. Y27. (second ring)
N130 X43.
N140 Y53.
N150 X27.
N160 Y27.
N170 X22.5 Y22.5 (third ring)
N180 X47.5
N190 Y57.5
N200 X22.5
N210 Y22.5
N220 X21. Y18. (finishing pass, counter-clockwise)
N230 X49.
N240 G3 X52. Y21. I0. J3. (corner arc given by its centre)
N250 G1 Y59.
N260 G3 X49. Y62. R3. (the same corner given by its radius)
N270 G1 X21.
N280 G3 X18. Y59. I0. J-3.
N290 G1 Y21.
N300 G3 X21. Y18. R3.
N310 G0 Z5.
(Pocket 2: 35 x 25 mm with 5 mm corner radii, 4 mm deep)
N320 G0 X90. Y57.5 (helix start, 2.5 mm right of the pocket middle)
N330 Z1.
N340 G1 Z0. F100.
N350 G3 X85. Y57.5 Z-1. I-2.5 J0. (helical entry: half a turn per mm)
N360 X90. Y57.5 Z-2. I2.5 J0.
N370 X85. Y57.5 Z-3. I-2.5 J0.
N380 X90. Y57.5 Z-4. I2.5 J0.
N390 X87.5 Y55. R-2.5 (three quarters of a turn: negative R)
N400 G1 X77.5 Y52.5 F400. (clearing ring)
N410 X97.5
N420 Y62.5
N430 X77.5
N440 Y52.5
N450 X75. Y48. (finishing pass)
N460 X100.
N470 G3 X102. Y50. R2.
N480 G1 Y65.
N490 G3 X100. Y67. I-2. J0.
N500 G1 X75.
N510 G3 X73. Y65. R2.
N520 G1 Y50.
N530 G3 X75. Y48. I2. J0.
N540 G0 Z5.
N550 M5

(--- Tool 2: 4 mm end mill - bore of 16 mm diameter through 6 mm ---)
N560 T2 M6
N570 M3 S8000
N580 G0 X90. Y20. (bore centre)
N590 Z1.
N600 G1 Z-3. F80.
N610 X93. F300.
N620 G2 I-3. (full circle: start and end are the same point)
N630 G1 X96.
N640 G2 I-6.
N650 G1 X90.
N660 Z-6. F80. (second depth)
N670 X93. F300.
N680 G2 I-3.
N690 G1 X96.
N700 G2 I-6.
N710 G1 X90.
N720 G0 Z5.
N730 M5

(--- Tool 3: 10 mm end mill - outside profile, climb cut, two depths ---)
N740 T3 M6
N750 M3 S4000
N760 G0 X-7. Y-4.
N770 Z1.
N780 G1 Z-5.5 F150.
N790 G3 X-5. Y0. I-3. J4. F500. (lead-in arc, centre at X-10. Y0.)
N800 G1 Y80.
N810 G2 X0. Y85. I5. J0.
N820 G1 X120.
N830 G2 X125. Y80. R5.
N840 G1 Y0.
N850 G2 X120. Y-5. I-5. J0.
N860 G1 X0.
N870 G2 X-5. Y0. R5.
N880 G1 Z-10.5 F150. (full depth)
N890 Y80. F500.
N900 G2 X0. Y85. I5. J0.
N910 G1 X120.
N920 G2 X125. Y80. R5.
N930 G1 Y0.
N940 G2 X120. Y-5. I-5. J0.
N950 G1 X0.
N960 G2 X-5. Y0. R5.
N970 G3 X-7. Y4. I-5. J0. (lead-out arc)
N980 G0 Z5.
N990 M5
N1000 G0 X-20. Y-20.
N1010 M30
