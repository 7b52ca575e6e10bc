Dim d As New Date(2000, 2, 29, 10, 20, 30)
Print d.SQLDateTime
Print d.Year & "/" & d.Month & "/" & d.Day
Dim same As New Date(d)
Print d = same
Print d Is same
same.Second = same.Second + 1
Print d = same
Print d < same And same >= d
d.Day = d.Day + 1
Print d.SQLDate
d.TotalSeconds = d.TotalSeconds + 24 * 60 * 60
Print d.SQLDateTime
Print d.DayOfWeek
d.SQLDateTime = "1999-12-31 23:59:59"
d.Second = 60
Print d.SQLDateTime
Try
  d.SQLDate = "tomorrow"
Catch e As UnsupportedFormatException
  Print e.Message
End Try
Dim nothing As Date
Print nothing Is Nil
Print d = nothing
Dim v As Variant = d
Print VarType(v)
Print v
Print v.DateValue.Year
Print v.DoubleValue = d.TotalSeconds
Print v.DateValue Is d
Dim back As Date = v
Print back.Month
Dim days() As Date
days.Append(New Date(2001, 5, 6))
days.Append(d)
Print days.IndexOf(New Date(2000, 1, 1))
v = days
Print VarType(v) = &h1007
Dim events As New Dictionary
events.Value(New Date(2001, 5, 6)) = "party"
Print events.Value(days(0))
Dim today As New Date
Print today.Year > 2020
Dim sorted() As Date = Array(d, New Date(2001, 5, 6), New Date(1999, 1, 1))
sorted.Append Nil
sorted.Sort
Print sorted(0) Is Nil
For i As Integer = 1 To 3
  Print sorted(i).SQLDate
Next
v = "2000-02-29 10:20:30"
Dim leapDay As Date = v
Print leapDay.DayOfWeek & " " & v.DateValue.Second
v = "no date"
Print v.DateValue Is Nil
