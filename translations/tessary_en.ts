<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="zh_CN">
<context>
    <name>Abandoned</name>
    <message>
        <source>文件系统没有回应。</source>
        <translation>The file system does not respond.</translation>
    </message>
</context>
<context>
    <name>ArchiveError</name>
    <message>
        <source>文件夹“%1”不是空的，请选择新的或空的文件夹。</source>
        <translation>The folder “%1” is not empty. Choose a new or empty folder.</translation>
    </message>
    <message>
        <source>文件夹“%1”中没有导出的资料库。</source>
        <translation>The folder “%1” does not contain an exported library.</translation>
    </message>
    <message>
        <source>“%1”的导出或恢复已中断。</source>
        <translation>The export to or restore from “%1” was interrupted.</translation>
    </message>
</context>
<context>
    <name>Bus</name>
    <message>
        <source>资料库未能打开。</source>
        <translation>The library could not be opened.</translation>
    </message>
</context>
<context>
    <name>FileError</name>
    <message>
        <source>文件“%1”不存在。</source>
        <translation>The file “%1” does not exist.</translation>
    </message>
    <message>
        <source>没有权限读取“%1”。</source>
        <translation>You don’t have permission to read “%1”.</translation>
    </message>
    <message>
        <source>文件“%1”已损坏或不是可读取的图片。</source>
        <translation>The file “%1” is damaged or not a readable image.</translation>
    </message>
    <message>
        <source>无法读取“%1”。</source>
        <translation>“%1” could not be read.</translation>
    </message>
    <message>
        <source>磁盘空间不足，无法写入“%1”。</source>
        <translation>There is not enough disk space to write “%1”.</translation>
    </message>
    <message>
        <source>没有权限写入“%1”。</source>
        <translation>You don’t have permission to write “%1”.</translation>
    </message>
    <message>
        <source>磁盘为只读，无法写入“%1”。</source>
        <translation>“%1” could not be written because the disk is read-only.</translation>
    </message>
    <message>
        <source>无法写入“%1”。</source>
        <translation>“%1” could not be written.</translation>
    </message>
</context>
<context>
    <name>FileManager</name>
    <message>
        <source>没有找到可以显示文件的文件管理器。</source>
        <translation>No file manager was found that can show files.</translation>
    </message>
    <message>
        <source>找不到文件“%1”，它可能已被移动或删除。</source>
        <translation>The file “%1” was not found. It may have been moved or deleted.</translation>
    </message>
</context>
<context>
    <name>ImageError</name>
    <message>
        <source>图片已损坏或格式不受支持。</source>
        <translation>The image is damaged or its format is not supported.</translation>
    </message>
    <message>
        <source>图片尺寸过大，无法处理。</source>
        <translation>The image is too large to process.</translation>
    </message>
    <message>
        <source>图片处理进程意外退出。</source>
        <translation>The image process quit unexpectedly.</translation>
    </message>
    <message>
        <source>图片处理超时。</source>
        <translation>Processing the image took too long.</translation>
    </message>
    <message>
        <source>无法写入处理后的图片。</source>
        <translation>The processed image could not be written.</translation>
    </message>
</context>
<context>
    <name>ItemFacts</name>
    <message>
        <source>文字</source>
        <translation>Text</translation>
    </message>
    <message>
        <source>图片</source>
        <translation>Image</translation>
    </message>
    <message>
        <source>图片（%1）</source>
        <translation>Image (%1)</translation>
    </message>
    <message numerus="yes">
        <source>%1 个字符</source>
        <translation>
            <numerusform>%1 character</numerusform>
            <numerusform>%1 characters</numerusform>
        </translation>
    </message>
    <message>
        <source>未知</source>
        <translation>Unknown</translation>
    </message>
</context>
<context>
    <name>LibraryError</name>
    <message>
        <source>另一个 Tessary 正在使用资料库，请先将其退出。</source>
        <translation>Another Tessary is using the library. Quit it first.</translation>
    </message>
</context>
<context>
    <name>MessageError</name>
    <message>
        <source>与后台处理进程的通信失败。</source>
        <translation>Communication with a background process failed.</translation>
    </message>
</context>
<context>
    <name>Narrowing</name>
    <message>
        <source>来源 App：</source>
        <translation>App: </translation>
    </message>
    <message>
        <source>标签：</source>
        <translation>Tag: </translation>
    </message>
    <message>
        <source>早于 %1</source>
        <translation>Before %1</translation>
    </message>
    <message>
        <source>自 %1 起</source>
        <translation>Since %1</translation>
    </message>
</context>
<context>
    <name>OCRReminderStatus</name>
    <message>
        <source>识别到待办，可手动添加</source>
        <translation>Looks like a to-do; you can add it</translation>
    </message>
    <message>
        <source>已成功添加待办事项</source>
        <translation>To-do added</translation>
    </message>
    <message>
        <source>添加失败：</source>
        <translation>Could not add it: </translation>
    </message>
    <message>
        <source>Apple Vision 本地离线识别</source>
        <translation>Recognized offline on this computer</translation>
    </message>
</context>
<context>
    <name>OCRService</name>
    <message>
        <source>无法读取图片</source>
        <translation>The image could not be read</translation>
    </message>
    <message>
        <source>OCR 未返回结果</source>
        <translation>OCR returned no result</translation>
    </message>
</context>
<context>
    <name>PersistenceError</name>
    <message>
        <source>Core Data 模型缺少截图实体</source>
        <translation>The data model lacks the screenshot entity</translation>
    </message>
    <message>
        <source>Core Data 中的截图记录无效</source>
        <translation>A screenshot record in the data store is invalid</translation>
    </message>
    <message>
        <source>资料库由更新版本的 Tessary 创建，此版本无法打开</source>
        <translation>The library was created by a newer version of Tessary and cannot be opened by this one</translation>
    </message>
</context>
<context>
    <name>QuickSearchResultRow</name>
    <message>
        <source>刚刚</source>
        <translation>Just now</translation>
    </message>
    <message numerus="yes">
        <source>%n 分钟前</source>
        <translation>
            <numerusform>%n min ago</numerusform>
            <numerusform>%n min ago</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n 天前</source>
        <translation>
            <numerusform>%n day ago</numerusform>
            <numerusform>%n days ago</numerusform>
        </translation>
    </message>
    <message>
        <source>文字</source>
        <translation>Text</translation>
    </message>
    <message>
        <source>图片</source>
        <translation>Image</translation>
    </message>
    <message>
        <source>置顶</source>
        <translation>Pinned</translation>
    </message>
    <message>
        <source>收藏</source>
        <translation>Favorite</translation>
    </message>
</context>
<context>
    <name>RegionSelector</name>
    <message>
        <source>找不到可用显示器</source>
        <translation>No display is available</translation>
    </message>
    <message>
        <source>已取消识别</source>
        <translation>Recognition canceled</translation>
    </message>
</context>
<context>
    <name>ReminderService</name>
    <message>
        <source>未获得“提醒事项”访问权限</source>
        <translation>Access to reminders was not granted</translation>
    </message>
    <message>
        <source>未找到可用的默认提醒事项列表</source>
        <translation>No default reminders list is available</translation>
    </message>
</context>
<context>
    <name>ReminderStoreError</name>
    <message>
        <source>提醒事项服务不可用。</source>
        <translation>The reminders service is not available.</translation>
    </message>
    <message>
        <source>提醒事项服务没有及时响应。</source>
        <translation>The reminders service did not respond in time.</translation>
    </message>
    <message>
        <source>无法保存提醒事项。</source>
        <translation>The reminder could not be saved.</translation>
    </message>
</context>
<context>
    <name>ScreenCaptureError</name>
    <message>
        <source>无法读取屏幕内容。</source>
        <translation>The screen could not be read.</translation>
    </message>
    <message>
        <source>不支持此显示器的像素格式。</source>
        <translation>The pixel format of this display is not supported.</translation>
    </message>
    <message>
        <source>另一个程序正在占用鼠标或键盘，请稍后再试。</source>
        <translation>Another program is holding the mouse or keyboard. Try again later.</translation>
    </message>
</context>
<context>
    <name>ScreenCaptureService</name>
    <message>
        <source>未获得屏幕录制权限；本地 OCR 需要此权限，剪贴板记录仍可继续使用</source>
        <translation>Screen recording is not permitted. Local OCR needs this permission; clipboard history works without it</translation>
    </message>
    <message>
        <source>无法匹配所选区域的显示器</source>
        <translation>The display of the selected area could not be determined</translation>
    </message>
    <message>
        <source>已有本地 OCR 操作正在进行</source>
        <translation>Local OCR is already in progress</translation>
    </message>
    <message>
        <source>ScreenCaptureKit 没有返回图片</source>
        <translation>The screen capture returned no image</translation>
    </message>
</context>
<context>
    <name>ScreenshotScope</name>
    <message>
        <source>所有剪贴板</source>
        <translation>All Items</translation>
    </message>
    <message>
        <source>最近使用</source>
        <translation>Recently Used</translation>
    </message>
    <message>
        <source>今天</source>
        <translation>Today</translation>
    </message>
    <message>
        <source>最近 7 天</source>
        <translation>Last 7 Days</translation>
    </message>
    <message>
        <source>最近 30 天</source>
        <translation>Last 30 Days</translation>
    </message>
    <message>
        <source>收藏</source>
        <translation>Favorites</translation>
    </message>
    <message>
        <source>横图</source>
        <translation>Landscape Images</translation>
    </message>
    <message>
        <source>竖图</source>
        <translation>Portrait Images</translation>
    </message>
    <message>
        <source>大尺寸图片</source>
        <translation>Large Images</translation>
    </message>
    <message>
        <source>图片</source>
        <translation>Images</translation>
    </message>
    <message>
        <source>文字</source>
        <translation>Text</translation>
    </message>
    <message>
        <source>回收站</source>
        <translation>Trash</translation>
    </message>
</context>
<context>
    <name>SettingsFile</name>
    <message>
        <source>设置文件已损坏，已另存为 %1，并恢复默认设置</source>
        <translation>The settings file was damaged. It was saved as %1, and the default settings were restored</translation>
    </message>
    <message>
        <source>设置文件无法读取，已使用默认设置</source>
        <translation>The settings file could not be read; default settings are in use</translation>
    </message>
</context>
<context>
    <name>StoreError</name>
    <message>
        <source>无法打开数据库：</source>
        <translation>The database could not be opened: </translation>
    </message>
    <message>
        <source>数据库操作失败：</source>
        <translation>A database operation failed: </translation>
    </message>
    <message>
        <source>数据库查询失败：</source>
        <translation>A database query failed: </translation>
    </message>
</context>
<context>
    <name>TextRecognitionError</name>
    <message>
        <source>缺少文字识别模型，请安装 %1</source>
        <translation>A text recognition model is missing. Install %1</translation>
    </message>
    <message>
        <source>图片尺寸过大，无法识别。</source>
        <translation>The image is too large to recognize.</translation>
    </message>
    <message>
        <source>文字识别超时。</source>
        <translation>Text recognition took too long.</translation>
    </message>
    <message>
        <source>文字识别进程意外退出。</source>
        <translation>The text recognition process quit unexpectedly.</translation>
    </message>
</context>
<context>
    <name>WorkerError</name>
    <message>
        <source>后台处理进程没有及时响应。</source>
        <translation>A background process did not respond in time.</translation>
    </message>
    <message>
        <source>内容过大，无法交给后台处理进程。</source>
        <translation>The content is too large for the background process.</translation>
    </message>
    <message>
        <source>后台处理进程意外退出。</source>
        <translation>A background process quit unexpectedly.</translation>
    </message>
</context>
<context>
    <name>X11Error</name>
    <message>
        <source>无法连接图形显示服务</source>
        <translation>Could not connect to the display server</translation>
    </message>
    <message>
        <source>图形显示服务缺少所需的扩展</source>
        <translation>The display server lacks a required extension</translation>
    </message>
</context>
<context>
    <name>tessary::AppRuntime</name>
    <message>
        <source>无法同步搜索索引：</source>
        <translation>The search index could not be synchronized: </translation>
    </message>
    <message>
        <source>剪贴板记录仍在运行，但无法监听截图目录：</source>
        <translation>Clipboard history is running, but the screenshot folder cannot be watched: </translation>
    </message>
    <message>
        <source>无法更新开机启动设置：</source>
        <translation>The launch-at-login setting could not be changed: </translation>
    </message>
    <message>
        <source>文本项目没有对应的文件。</source>
        <translation>Text items have no file.</translation>
    </message>
</context>
<context>
    <name>tessary::Banner</name>
    <message>
        <source>关闭提示</source>
        <translation>Dismiss</translation>
    </message>
</context>
<context>
    <name>tessary::Chip</name>
    <message>
        <source>移除</source>
        <translation>Remove</translation>
    </message>
</context>
<context>
    <name>tessary::ClipboardIntake</name>
    <message>
        <source>无法记录剪贴板：</source>
        <translation>The clipboard could not be recorded: </translation>
    </message>
</context>
<context>
    <name>tessary::DetailPane</name>
    <message>
        <source>选择一条记录查看详情</source>
        <translation>Select an item to see its details</translation>
    </message>
    <message>
        <source>仅预览前 %1 个字符，复制时为全文</source>
        <translation>Only the first %1 characters are shown; copying takes the whole text</translation>
    </message>
</context>
<context>
    <name>tessary::FactsPanel</name>
    <message>
        <source>类型</source>
        <translation>Type</translation>
    </message>
    <message>
        <source>尺寸与大小</source>
        <translation>Size</translation>
    </message>
    <message>
        <source>复制时间</source>
        <translation>Copied</translation>
    </message>
    <message>
        <source>来源 App</source>
        <translation>App</translation>
    </message>
</context>
<context>
    <name>tessary::FileIntake</name>
    <message>
        <source>无法导入截图：</source>
        <translation>The screenshot could not be imported: </translation>
    </message>
</context>
<context>
    <name>tessary::FilterMenu</name>
    <message>
        <source>综合相关性</source>
        <translation>Relevance</translation>
    </message>
    <message>
        <source>最新优先</source>
        <translation>Newest First</translation>
    </message>
    <message>
        <source>最旧优先</source>
        <translation>Oldest First</translation>
    </message>
    <message>
        <source>最近使用</source>
        <translation>Recently Used</translation>
    </message>
    <message>
        <source>文件大小</source>
        <translation>File Size</translation>
    </message>
    <message>
        <source>范围</source>
        <translation>Show</translation>
    </message>
    <message>
        <source>排序</source>
        <translation>Sort By</translation>
    </message>
</context>
<context>
    <name>tessary::LocalOCRFlow</name>
    <message>
        <source>本地 OCR 失败：</source>
        <translation>Local OCR failed: </translation>
    </message>
    <message>
        <source>无法写入剪贴板。</source>
        <translation>The clipboard could not be written.</translation>
    </message>
</context>
<context>
    <name>tessary::LocalOCRResultView</name>
    <message>
        <source>OCR 识别结果</source>
        <translation>OCR Result</translation>
    </message>
    <message>
        <source>最小化</source>
        <translation>Minimize</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>再次复制</source>
        <translation>Copy Again</translation>
    </message>
    <message>
        <source>已识别并复制到剪贴板</source>
        <translation>Recognized and copied</translation>
    </message>
    <message>
        <source>识别区域</source>
        <translation>Selected area</translation>
    </message>
    <message>
        <source>正在添加...</source>
        <translation>Adding...</translation>
    </message>
    <message>
        <source>添加待办</source>
        <translation>Add To-Do</translation>
    </message>
</context>
<context>
    <name>tessary::LocalOCRResultWindowController</name>
    <message>
        <source>OCR 识别结果</source>
        <translation>OCR Result</translation>
    </message>
</context>
<context>
    <name>tessary::MenuBarContent</name>
    <message>
        <source>打开 Tessary</source>
        <translation>Open Tessary</translation>
    </message>
    <message>
        <source>打开 Tessary 的全局快捷键不可用</source>
        <translation>The global shortcut for opening Tessary is unavailable</translation>
    </message>
    <message>
        <source>设置…</source>
        <translation>Settings…</translation>
    </message>
    <message>
        <source>退出 Tessary</source>
        <translation>Quit Tessary</translation>
    </message>
</context>
<context>
    <name>tessary::OCRStatusRow</name>
    <message numerus="yes">
        <source>%n 个字符</source>
        <translation>
            <numerusform>%n character</numerusform>
            <numerusform>%n characters</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>tessary::PanelFooter</name>
    <message>
        <source>选择</source>
        <translation>Select</translation>
    </message>
    <message>
        <source>预览</source>
        <translation>Preview</translation>
    </message>
    <message>
        <source>复制</source>
        <translation>Copy</translation>
    </message>
    <message>
        <source>粘贴</source>
        <translation>Paste</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Close</translation>
    </message>
    <message numerus="yes">
        <source>%n 个结果</source>
        <translation>
            <numerusform>%n result</numerusform>
            <numerusform>%n results</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>tessary::PasteBack</name>
    <message>
        <source>内容已复制。授予辅助功能权限后可自动粘贴；现在请切换到目标 App 并按 ⌘ V。</source>
        <translation>Copied. Tessary can paste for you once it has the accessibility permission; for now, switch to the target app and press ⌘ V.</translation>
    </message>
    <message>
        <source>无法将内容写入剪贴板</source>
        <translation>The item could not be written to the clipboard</translation>
    </message>
    <message>
        <source>内容已复制，但无法切回原来的 App 完成粘贴。请确认辅助功能权限已授权。</source>
        <translation>Copied, but Tessary could not switch back to the previous app to paste. Make sure the accessibility permission is granted.</translation>
    </message>
</context>
<context>
    <name>tessary::PermissionRequests</name>
    <message>
        <source>无法申请提醒事项权限：</source>
        <translation>Permission for reminders could not be requested: </translation>
    </message>
</context>
<context>
    <name>tessary::PicturePreview</name>
    <message>
        <source>预览</source>
        <translation>Preview</translation>
    </message>
    <message>
        <source>无法载入图片</source>
        <translation>Could not load the image</translation>
    </message>
    <message>
        <source>原始图片可能已被移动或删除</source>
        <translation>The original may have been moved or deleted</translation>
    </message>
</context>
<context>
    <name>tessary::QuickSearchView</name>
    <message>
        <source>没有匹配的内容</source>
        <translation>No matches</translation>
    </message>
    <message>
        <source>尝试减少关键词或更改筛选条件</source>
        <translation>Try fewer keywords or a different filter</translation>
    </message>
    <message>
        <source>还没有剪贴板记录</source>
        <translation>Nothing copied yet</translation>
    </message>
    <message>
        <source>复制文字或图片后，内容会自动出现在这里</source>
        <translation>Text and images that you copy appear here</translation>
    </message>
    <message>
        <source>剪贴板记录已暂停，可在设置中恢复</source>
        <translation>Clipboard history is paused; resume it in Settings</translation>
    </message>
    <message>
        <source>正在搜索剪贴板</source>
        <translation>Searching the clipboard</translation>
    </message>
</context>
<context>
    <name>tessary::RecognizedTextEdit</name>
    <message>
        <source>识别的文字</source>
        <translation>Recognized text</translation>
    </message>
</context>
<context>
    <name>tessary::RegionPicture</name>
    <message>
        <source>识别区域</source>
        <translation>Selected area</translation>
    </message>
</context>
<context>
    <name>tessary::RegionSelectionView</name>
    <message>
        <source>拖动选择需要识别的文字区域 · Esc 取消</source>
        <translation>Drag over the text to recognize · Esc to cancel</translation>
    </message>
</context>
<context>
    <name>tessary::ResultList</name>
    <message>
        <source>搜索结果</source>
        <translation>Search results</translation>
    </message>
</context>
<context>
    <name>tessary::ResultListModel</name>
    <message>
        <source>加载更多</source>
        <translation>Load More</translation>
    </message>
</context>
<context>
    <name>tessary::RowMenu</name>
    <message>
        <source>复制图片</source>
        <translation>Copy Image</translation>
    </message>
    <message>
        <source>复制并粘贴</source>
        <translation>Copy and Paste</translation>
    </message>
    <message>
        <source>预览</source>
        <translation>Preview</translation>
    </message>
    <message>
        <source>在 Finder 中显示</source>
        <translation>Show in File Manager</translation>
    </message>
    <message>
        <source>取消收藏</source>
        <translation>Remove from Favorites</translation>
    </message>
    <message>
        <source>收藏</source>
        <translation>Favorite</translation>
    </message>
    <message>
        <source>取消置顶</source>
        <translation>Unpin</translation>
    </message>
    <message>
        <source>置顶</source>
        <translation>Pin</translation>
    </message>
    <message>
        <source>移到回收站</source>
        <translation>Move to Trash</translation>
    </message>
</context>
<context>
    <name>tessary::SearchBar</name>
    <message>
        <source>过滤</source>
        <translation>Filter</translation>
    </message>
    <message>
        <source>设置</source>
        <translation>Settings</translation>
    </message>
    <message>
        <source>取消固定窗口</source>
        <translation>Stop Keeping on Top</translation>
    </message>
    <message>
        <source>置顶</source>
        <translation>Keep on Top</translation>
    </message>
</context>
<context>
    <name>tessary::SearchField</name>
    <message>
        <source>搜索剪贴板文字、来源 App...</source>
        <translation>Search text and apps...</translation>
    </message>
</context>
<context>
    <name>tessary::StorageMaintenance</name>
    <message>
        <source>自动清理失败：</source>
        <translation>Automatic cleanup failed: </translation>
    </message>
    <message>
        <source>无法清空数据：</source>
        <translation>The data could not be erased: </translation>
    </message>
</context>
<context>
    <name>tessary::SuccessBubble</name>
    <message>
        <source>已成功添加待办事项</source>
        <translation>To-do added</translation>
    </message>
</context>
<context>
    <name>tessary::TextPage</name>
    <message>
        <source>预览</source>
        <translation>Preview</translation>
    </message>
</context>
</TS>
