Const Limit = 10
Const Half = Limit / 2
Const Name = "N" + "ame"
Const Negative = -3
Dim total As Integer = 1
Print Half & Name & Negative
Show
For i As Integer = 1 To 2
  Dim fresh As Integer
  fresh = fresh + i
  Dim list() As String
  list.Append "x"
  Print fresh & UBound(list)
  total = total + 1
Next
Show
If True Then
  Dim total As String = "inner"
  Const Limit = 3
  Print total & Limit
End If
Print total & Limit
Dim later As Integer = 4
Sub Show()
  Dim total As Double = 0.5
  Print Limit & " " & total & " " & later & " " & Outer()
End Sub
Function Outer() As Integer
  Return total
End Function
Print &c102030 = RGB(16, 32, 48)
Dim long_name _
  As Integer _ ' continued twice
  = 3
Print long_name
