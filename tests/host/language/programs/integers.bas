Dim a As Int32 = 2147483647
a = a + 1
Print a
Dim b As UInt32 = 4294967295
b = b + 1
Print b
Dim c As Int64 = 9223372036854775807
Print c
c = c + 1
Print c
Dim d As UInt64 = 18446744073709551615
Print d
d = d + 2
Print d
Print d > -1
d = 18446744073709551615
Print d > -1
Print d \ 10
Print d Mod 10
Print &hFF
Print &b101
Print &h7FFFFFFFFFFFFFFF
Dim narrow As Int32 = &hFFFFFFFF
Print narrow
Dim wide As Int64 = narrow
Print wide
Print Hex(255)
Print Hex(narrow)
Print Hex(wide)
c = -9223372036854775807
c = c - 1
Print c \ -1
Print c Mod -1
Print Abs(-5)
Print Abs(-5.5)
Print Min(3, 1, 2)
Print Max(3, 1.5)
Print Max(4, 9, 7, 8)
For i As Int32 = 2147483646 To 2147483647
  Print i
Next
