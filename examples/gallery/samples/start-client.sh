# -*- encoding: KOI8-R -*-
# Запуск клиента безопасности с журналом в домашнем каталоге: sh start-client.sh
# Кодировка объявлена в первой строке: редактор читает и пишет этот файл в KOI8-R.

LOG="$HOME/.client/журнал.log"
echo "Запуск клиента..." >> "$LOG"
exec client --config /etc/client/client.conf "$@"
