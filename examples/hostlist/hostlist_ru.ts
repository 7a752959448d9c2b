<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ru_RU">
<context>
    <name>HostModel</name>
    <message>
        <source>Name</source>
        <translation>Имя</translation>
    </message>
    <message>
        <source>Address</source>
        <translation>Адрес</translation>
    </message>
    <message>
        <source>Port</source>
        <translation>Порт</translation>
    </message>
    <message>
        <source>Comment</source>
        <translation>Комментарий</translation>
    </message>
    <message>
        <source>Line %1 is not name;address;port;comment: %2</source>
        <translation>Строка %1 не в виде имя;адрес;порт;комментарий: %2</translation>
    </message>
</context>
<context>
    <name>HostDialog</name>
    <message>
        <source>Host</source>
        <translation>Узел</translation>
    </message>
    <message>
        <source>&amp;Name:</source>
        <translation>&amp;Имя:</translation>
    </message>
    <message>
        <source>&amp;Address:</source>
        <translation>&amp;Адрес:</translation>
    </message>
    <message>
        <source>&amp;Port:</source>
        <translation>&amp;Порт:</translation>
    </message>
    <message>
        <source>&amp;Comment:</source>
        <translation>&amp;Комментарий:</translation>
    </message>
    <message>
        <source>Give the host a name without ';'.</source>
        <translation>Дайте узлу имя без «;».</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is neither an IP address nor a host name.</source>
        <translation>«%1» — не IP-адрес и не имя хоста.</translation>
    </message>
</context>
<context>
    <name>HostWindow</name>
    <message>
        <source>Host list</source>
        <translation>Список узлов</translation>
    </message>
    <message>
        <source>F&amp;ind:</source>
        <translation>&amp;Найти:</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Файл</translation>
    </message>
    <message>
        <source>Hosts</source>
        <translation>Узлы</translation>
    </message>
    <message>
        <source>&amp;Add...</source>
        <translation>&amp;Добавить...</translation>
    </message>
    <message>
        <source>&amp;Edit...</source>
        <translation>&amp;Изменить...</translation>
    </message>
    <message>
        <source>&amp;Delete</source>
        <translation>&amp;Удалить</translation>
    </message>
    <message>
        <source>&amp;Import...</source>
        <translation>Им&amp;порт...</translation>
    </message>
    <message>
        <source>E&amp;xport...</source>
        <translation>&amp;Экспорт...</translation>
    </message>
    <message>
        <source>&amp;Language</source>
        <translation>&amp;Язык</translation>
    </message>
    <message>
        <source>Import hosts</source>
        <translation>Импорт узлов</translation>
    </message>
    <message>
        <source>Export hosts</source>
        <translation>Экспорт узлов</translation>
    </message>
    <message>
        <source>The new language is used from the next start of the program.</source>
        <translation>Новый язык будет использован при следующем запуске программы.</translation>
    </message>
    <message numerus="yes">
        <source>Delete %n host(s)?</source>
        <translation>
            <numerusform>Удалить %n узел?</numerusform>
            <numerusform>Удалить %n узла?</numerusform>
            <numerusform>Удалить %n узлов?</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n host(s) imported</source>
        <translation>
            <numerusform>Импортирован %n узел</numerusform>
            <numerusform>Импортировано %n узла</numerusform>
            <numerusform>Импортировано %n узлов</numerusform>
        </translation>
    </message>
</context>
</TS>
