' Numbers and the order of operations
Print 1 + 2 * 3
Print (1 + 2) * 3
Print 7 / 2
Print 7 \ 2
Print -7 \ 2
Print 7 Mod 3
Print -7 Mod 3
Print 2 ^ 10
Print -2 ^ 2
Print 2 ^ -1
Print 10 - 4 - 3
Print 0.1 + 0.2
Print 1e3
Print 1.5e-3
Print 1 / 3
Dim big As Int64 = 100000000
Print big * 10000000
Print 1e20
Print 1 / 0
Print -1 / 0
Dim s As Single = 1 / 3
Print s
Dim c As Currency = 1.25
c = c + 0.0001
Print c
Dim half As Integer = 2.9
Print half
half = -2.9
Print half
Dim d As Double = 3
Print d
Print 3 = 3.0
Print 2 < 10 And 10 < 9
Print True Or False
Print True Xor True
Print Not True
Print 6 And 3
Print 6 Or 3
Print 6 Xor 3
Print Not 5
Print 7.9 \ 2
