Dim counter As Integer
Print Twice(4)
Print Factorial(10)
Greet
Greet "Ada"
Greet("Ada", "Bye")
Dim x As Integer = 1
Dim y As Integer = 2
Swap x, y
Print x & y
Dim list(1) As Integer
list(0) = 7
Increment list(0)
Print list(0)
Print Describe(1)
Print Describe(1.5)
Print Describe("s")
Print Describe(1, 2)
Print Early(3)
Print Early(-3)
Print "[" + Nothing + "]"
Print Depth(500)
Count
Count
Print counted()
Print Twice(Twice(1)) + Factorial(3)
Leave 1
Leave 5
Print Optionals
Print Optionals(1, 2)



Function Twice(n As Integer) As Integer
  Return n * 2
End Function
Function Factorial(n As Int64) As Int64
  If n <= 1 Then Return 1
  Return n * Factorial(n - 1)
End Function
Sub Greet(name As String = "world", word As String = "Hello")
  Print word + ", " + name
End Sub
Sub Swap(ByRef a As Integer, ByRef b As Integer)
  Dim keep As Integer = a
  a = b
  b = keep
End Sub
Sub Increment(ByRef n As Integer)
  n = n + 1
End Sub
Function Describe(n As Integer) As String
  Return "Integer"
End Function
Function Describe(n As Double) As String
  Return "Double"
End Function
Function Describe(s As String) As String
  Return "String"
End Function
Function Describe(a As Integer, b As Integer) As String
  Return "two"
End Function
Function Early(n As Integer) As String
  For i As Integer = 1 To 10
    While True
      If i = n Then Return "found " & i
      If n < 0 Then Exit Function
      Exit While
    Wend
  Next
  Return "not found"
End Function
Function Nothing() As String
End Function
Function Depth(n As Integer) As Integer
  If n = 0 Then Return 0
  Return 1 + Depth(n - 1)
End Function
Sub Count()
  counter = counter + 1
End Sub
Sub Leave(n As Integer)
  If n > 3 Then Exit Sub
  Print "left late"
End Sub
Function Optionals(Optional a As Integer, Optional b As Integer) As Integer
  Return a * 10 + b
End Function
Function Counted() As Integer
  Return counter
End Function
