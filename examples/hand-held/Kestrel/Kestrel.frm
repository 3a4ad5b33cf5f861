# Name|Left|Top|Width
Field|4|4|100
Value|108|4|80
Unit|192|4|44
