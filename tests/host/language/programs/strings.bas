Dim s As String = "say ""hi"""
Print s
Print Len(s)
Print Left("abcdef", 2) + "|" + Right("abcdef", 2) + "|" + Mid("abcdef", 3, 2) + "|" + Mid("abcdef", 5)
Print Left("abc", 9) + "|" + Right("abc", 9) + "|" + Mid("abc", 9) + "|" + Left("abc", -1) + "|"
Print InStr("Hello World", "world")
Print InStr(6, "Hello World", "o")
Print InStr("Hello", "x")
Print Replace("one two two", "TWO", "2")
Print ReplaceAll("one two two", "two", "2")
Print ReplaceAll("aaa", "a", "aa")
Print Upper("abcXYZ") + Lower("abcXYZ")
Print "[" + Trim("  a b  ") + "]"
Print Join(Split("a,b,,c", ","), "-")
Print UBound(Split("a,b,,c", ","))
Print UBound(Split("", ","))
Print Join(Split("a b"))
Print NthField("a;b;c", ";", 2) + NthField("a;b;c", ";", 4) + "."
Print CountFields("a;b;c", ";")
Print Chr(65) + Chr(233)
Print Asc("A")
Print LenB(Chr(233))
Print LenB(ChrB(200))
Print "n = " & 5 & ", " & 2.5 & ", " & True
Print "abc" = "ABC"
Print "abc" < "abd"
Print "ab" < "abc"
Print "a" <> "b"
Print Str(12) + Str(1.5) + Str(True)
Print Val("12.5abc") + Val("&hFF") + Val("x")
Print CDbl("3.25") * 2
Print CStr(7)
Dim n As Integer
Dim t As String
For n = 1 To 5
  t = t + Chr(64 + n)
Next
Print t
