Dim list() As Integer
Print UBound(list)
list.Append 5
list.Append(3)
list.Insert 0, 9
Print list(0) & list(1) & list(2)
Print UBound(list)
Print list.IndexOf(3)
Print list.IndexOf(4)
Print list.IndexOf(5, 2)
list.Remove 1
Print Join(Array(Str(list(0)), Str(list(1))), ",")
Print list.Pop
Print list.Ubound
Redim list(3)
Print list(0) & list(1) & list(3)
Redim list(-1)
Print UBound(list)
Dim words() As String = Array("pear", "Apple", "fig")
words.Sort
Print Join(words, " ")
Print words.IndexOf("PEAR")
Dim numbers() As Double = Array(2.5, -1, 10)
numbers.Sort
For Each number As Double In numbers
  Print number
Next
Dim fixed(2) As String
Print UBound(fixed) & "[" & fixed(2) & "]"
fixed(1) = "b"
Print fixed(1)
Dim same() As String = fixed
same(1) = "c"
Print fixed(1)
Dim mixed() As Variant = Array(1, "two", 3.5, Nil)
Print UBound(mixed)
Print mixed(1)
Dim objects() As MemoryBlock
objects.Append New MemoryBlock(4)
objects.Append Nil
Print objects(0).Size
Print objects(1) Is Nil
Sub Fill(target() As Integer, count As Integer)
  For i As Integer = 1 To count
    target.Append i * i
  Next
End Sub
Function Total(values() As Integer) As Integer
  Dim sum As Integer
  For Each value As Integer In values
    sum = sum + value
  Next
  Return sum
End Function
Function Names() As String()
  Return Split("k l m")
End Function
Fill list, 4
Print Total(list)
Print Names(1)
Print UBound(Names)
Dim a(1), b As Integer, c(2) As String
Print UBound(a) & UBound(c) & b
Dim anything() As Variant = Array(7, "8", 9.5, Nil)
Dim whole() As Integer = anything
whole(0) = 70
Print whole(0) + whole(1) + whole(2) + whole(3)
Print anything(0)
Dim held As Variant = anything
Dim texts() As String = held
Print Join(texts, "|")
Redim anything(1)
anything(0) = New MemoryBlock(3)
anything(1) = Nil
objects = anything
Print objects(0).Size
Print objects(1) Is Nil
