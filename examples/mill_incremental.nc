(MILL INCREMENTAL - sample milling program with relative moves)
(A row of five spot holes at a pitch of 15 mm and a stepped slot)
(ending in a half circle. Both patterns are written with G91: each)
(X Y Z word is a distance from the previous point. The set-up moves)
(before and after them are absolute again with G90.)
(Units: mm. Origin: lower left corner of a 100 x 60 plate. Z0 on top.)
N10 G21 G17 G90
N20 G0 Z5.

(--- Tool 1: 6 mm spot drill - row of holes ---)
N30 T1 M6
N40 M3 S3000
N50 G0 X20. Y45. (first hole, absolute position)
N60 G91 (incremental from here)
N70 G1 Z-7. F100. (hole 1: down 7 mm to Z-2.)
N80 G0 Z7.
N90 X15. (15 mm to the right)
N100 G1 Z-7. (hole 2)
N110 G0 Z7.
N120 X15.
N130 G1 Z-7. (hole 3)
N140 G0 Z7.
N150 X15.
N160 G1 Z-7. (hole 4)
N170 G0 Z7.
N180 X15.
N190 G1 Z-7. (hole 5)
N200 G0 Z7.
N210 G90 (absolute again: the last hole was at X80. Y45.)
N220 M5

(--- Tool 2: 6 mm end mill - stepped slot 2 mm deep ---)
N230 T2 M6
N240 M3 S5000
N250 G0 X10. Y10.
N260 Z1.
N270 G1 Z-2. F100.
N280 G91 (incremental steps)
N290 X15. F400.
N300 Y8.
N310 X15.
N320 Y8.
N330 X15. (now at X55. Y26.)
N340 G2 X20. Y0. I10. J0. (half circle over the top)
N350 G1 X15.
N360 Y-16. (now at X90. Y10.)
N370 G90 (absolute again)
N380 G0 Z5.
N390 X0. Y0.
N400 M5
N410 M30
