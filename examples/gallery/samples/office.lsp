; Политика безопасности рабочей станции (без объявления кодировки: Windows-1251).
GlobalParameters {
    Title = "Политика офиса в Москве"
    Version = "3"
}
FilterRule (
    Name = "Разрешить DNS"
    Protocol = UDP
    RemotePort = 53
    Action = PASS
)
FilterRule (
    Name = "Запретить всё остальное"
    Action = DROP
)
