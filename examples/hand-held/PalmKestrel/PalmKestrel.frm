# Name|Left|Top|Width
Field|2|2|70
Value|74|2|54
Unit|130|2|28
