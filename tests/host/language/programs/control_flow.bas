Dim i As Integer
For i = 1 To 3
  Print i
Next
Print i
For i = 5 DownTo 1 Step 2
  Print i
Next i
For i = 5 To 1 Step -2
  Print "down " & i
Next
For i = 1 To 0
  Print "never"
Next
For x As Double = 0 To 1 Step 0.25
  Print x
Next
Dim n As Integer = 3
While n > 0
  n = n - 1
  If n = 1 Then Continue
  Print "while " & n
Wend
Do
  n = n + 1
Loop Until n = 4
Print n
Do While n < 6
  n = n + 1
Loop
Print n
Do Until n = 0
  n = n - 1
  If n = 2 Then Exit
Loop
Print n
Do
  n = n + 10
Loop While n < 30
Print n
Dim j As Integer
For i = 1 To 3
  For j = 1 To 3
    If j = 2 Then Continue For
    If i = 2 Then Exit For
    Print Str(i) + Str(j)
  Next
Next
While True
  For j = 1 To 3
    If j = 2 Then Exit While
    Print "in both " & j
  Next
Wend
For i = 1 To 12
  Select Case i
  Case 1
    Print "one"
  Case 2, 4 To 5
    Print "two or four to five: " & i
  Case Is >= 11
    Print "large"
  Case Is <> 3
  Case Else
    Print "else " & i
  End Select
Next
Select Case "Hello"
Case "a" To "g"
  Print "first half"
Case "HELLO"
  Print "greeting"
End Select
If n = 1 Then
  Print "no"
ElseIf n = 32 Then
  Print "thirty-two"
Else
  Print "no"
End If
If n = 1 Then Print "no" Else If n = 32 Then Print "yes" Else Print "no"
For Each word As String In Split("x y z")
  If word = "y" Then Continue
  Print word
Next
' Every word of the source may be written in any case
FOR i = 1 to 1
  PRINT "case"
next
' Logic stops where the answer is known
Dim none As MemoryBlock
If none Is Nil Or none.Size = 0 Then Print "short"
If none <> Nil And none.Size > 0 Then Print "no"
