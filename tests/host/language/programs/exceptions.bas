Try
  Print "before"
  Raise New IOException("gone", 7)
  Print "never"
Catch e As NilObjectException
  Print "wrong"
Catch e As IOException
  Print e.Message & e.ErrorNumber
Finally
  Print "finally"
End Try
Try
  Dim list() As Integer
  list(2) = 1
Catch e As RuntimeException
  Print e.Message
End Try
Try
  Try
    Raise New OutOfBoundsException("inner")
  Finally
    Print "inner finally"
  End Try
Catch e
  Print "outer " + e.Message
  Print e IsA OutOfBoundsException
End Try
Try
  Try
    Raise New RuntimeException("first")
  Catch e
    Raise New RuntimeException("second after " + e.Message)
  End Try
Catch e
  Print e.Message
End Try
Try
  Deep 3
Catch
  Print "caught from below"
End Try
Print Careful()
For i As Integer = 1 To 3
  Try
    If i = 2 Then Continue
    Print "round " & i
  Finally
    Print "end of round " & i
  End Try
Next
Dim kept As RuntimeException
Try
  Raise New KeyNotFoundException("kept")
Catch e As KeyNotFoundException
  kept = e
End Try
Print kept.Message
Try
  Raise kept
Catch e
  Print e Is kept
End Try
Try
  Forever 1
Catch e As StackOverflowException
  Print "deep enough"
End Try
Try
  Print 1 Mod 0
Catch e
  Print e.Message
End Try
Dim mine As New RuntimeException
mine.Message = "set by hand"
mine.ErrorNumber = 3
Try
  Raise mine
Catch e
  Print e.Message & e.ErrorNumber
End Try

Sub Deep(n As Integer)
  If n = 0 Then Raise New RuntimeException("deep")
  Deep n - 1
  Print "never"
End Sub
Function Careful() As String
  Try
    Return "returned"
  Finally
    Print "before the return"
  End Try
End Function
Sub Forever(n As Integer)
  Forever n + 1
End Sub
