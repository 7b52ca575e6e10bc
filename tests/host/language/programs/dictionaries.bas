Dim d As New Dictionary
d.Value("one") = 1
d.Value("Two") = 2.5
d.Value(3) = "three"
d.Value(True) = New MemoryBlock(4)
d.Value(&cFF0000) = Nil
Print d.Count
Print d.Value("ONE")
Print d.Value("two") + 1
Print d.Value(3.0)
Print MemoryBlock(d.Value(True)).Size
Print d.Value(&cFF0000) Is Nil
Print d.HasKey("three")
Print d.HasKey(3)
d.Value("one") = d.Value("one") + 41
Dim n As Integer = d.Value("one")
Print n
For i As Integer = 0 To d.Count - 1
  Dim key As Variant = d.Key(i)
  If key.IsNumeric Then Print "number" Else Print VarType(key)
Next
d.Remove("Two")
Print d.Key(1)
Print d.Lookup("Two", "gone")
Try
  Print d.Value("Two")
Catch e As KeyNotFoundException
  Print e.Message
End Try

Dim inner As New Dictionary
inner.Value("list") = Array("a", "b", "c")
d.Clear
d.Value("inner") = inner
Dim list() As String = Dictionary(d.Value("inner")).Value("list")
Print list(2)
For Each key As Variant In d.Keys
  Print key
Next
For Each value As Variant In inner.Values
  Print value.IsArray
Next
Print UBound(inner.Keys)
Print d.Value("inner") IsA Dictionary
Print Total(inner)

Function Total(d As Dictionary) As Integer
  d.Value("calls") = d.Lookup("calls", 0) + 1
  Return d.Count
End Function
